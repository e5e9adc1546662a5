#include "model/number_track.h"

#include <algorithm>

#include "model/client_boundary.h"
#include "model/static_data.h"

namespace ZT_PLUGIN {

void WidestPattern::Ask(std::uint64_t digitsInteger, std::uint64_t digitsDecimal, bool isSigned) {
    constexpr std::uint64_t kMostDigits = 1000;  // every sample takes as many
    const NumberPattern pattern = CheckedPattern(digitsInteger, digitsDecimal, isSigned);
    if (pattern.IsKnown() && (digitsInteger > kMostDigits || digitsDecimal > kMostDigits)) {
        throw ZT_PluginException(ZT_RANGE_VALUE);
    }
    asked_ = pattern;
}

void WidestPattern::Widen(std::string_view number) {
    const zentor::DigitCounts digits = zentor::CountDigits(number);
    widest_.digitsInteger = std::max(widest_.digitsInteger, digits.integer);
    widest_.digitsDecimal = std::max(widest_.digitsDecimal, digits.decimal);
    widest_.isSigned = widest_.isSigned || digits.isNegative;
}

NumberPattern WidestPattern::Get() const {
    NumberPattern pattern = widest_;
    pattern.isSigned = pattern.isSigned || asked_.isSigned;
    if (!asked_.IsKnown()) return pattern;
    pattern.digitsInteger = std::max(pattern.digitsInteger, asked_.digitsInteger);
    pattern.digitsDecimal = std::max(pattern.digitsDecimal, asked_.digitsDecimal);
    return pattern;
}

void CheckWithin(const MinMax& legal, double value) {
    CheckNumber(value);
    if (legal.IsKnown() && !(value >= legal.minimum && value <= legal.maximum)) {
        throw ZT_PluginException(ZT_RANGE_VALUE);
    }
}

}  // namespace ZT_PLUGIN
