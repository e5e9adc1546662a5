// What the samples of numbers have been like: how wide their texts are and which range they occupy.
#pragma once

#include <string_view>

#include "model/node_values.h"

namespace ZT_PLUGIN {

// The widest integer and decimal parts, and whether there is a sign: as asked for, and widened by the texts.
class WidestPattern {
public:
    // Codes 2006 (exactly one digit count is unset), 2008 (more digits than 1000).
    void Ask(std::uint64_t digitsInteger, std::uint64_t digitsDecimal, bool isSigned);
    void AskForSign(bool isSigned) { asked_.isSigned = isSigned; }
    // A number without an exponent.
    void Widen(std::string_view number);
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

// Code 2008 for a number that cannot be written or lies outside.
void CheckWithin(const MinMax& legal, double value);

}  // namespace ZT_PLUGIN
