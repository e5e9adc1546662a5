// What the samples of numbers have been like: how wide their texts are and which range they occupy.
#pragma once

#include <algorithm>
#include <string_view>

#include "errors/exception.h"
#include "model/node_values.h"
#include "zentor/error_codes.h"

namespace ZT_PLUGIN {

// The widest integer and decimal parts, and whether there is a sign: as asked for, and widened by the texts.
class WidestPattern {
public:
    // Codes ZT_INCOMPLETE_PATTERN (exactly one digit count is unset), ZT_RANGE_VALUE (more digits than 1000).
    void Ask(std::uint64_t digitsInteger, std::uint64_t digitsDecimal, bool isSigned);
    void AskForSign(bool isSigned) { asked_.isSigned = isSigned; }
    // A number without an exponent, which has `integers` digits before its point.
    void Widen(std::string_view number, std::size_t integers) {
        const std::size_t sign = number.starts_with('-') ? 1 : 0;
        const std::size_t rest = number.size() - sign - integers;  // the point and the decimals
        widest_.digitsInteger = std::max<std::uint64_t>(widest_.digitsInteger, integers);
        if (rest != 0) widest_.digitsDecimal = std::max<std::uint64_t>(widest_.digitsDecimal, rest - 1);
        widest_.isSigned = widest_.isSigned || sign != 0;
    }
    NumberPattern Get() const;

private:
    NumberPattern asked_;
    NumberPattern widest_{1, 0, false};
};

// Takes a value into what is occupied.
inline void Widen(MinMax& occurring, double value) {
    value += 0.0;  // a negative zero is a zero
    if (value < occurring.minimum) occurring.minimum = value;
    if (value > occurring.maximum) occurring.maximum = value;
}

// Code ZT_RANGE_VALUE for a number that cannot be written or lies outside.
inline void CheckWithin(const MinMax& legal, double value, zentor::NumberForm form) {
    const bool isWithin = !legal.IsKnown() || (value >= legal.minimum && value <= legal.maximum);
    if (!isWithin || !zentor::IsWritable(value, form)) throw ZT_PluginException(ZT_RANGE_VALUE);
}

}  // namespace ZT_PLUGIN
