#include "model/number_track.h"

#include "model/static_data.h"

namespace ZT_PLUGIN {

void WidestPattern::Ask(std::uint64_t digitsInteger, std::uint64_t digitsDecimal, bool isSigned) {
    asked_ = CheckedPattern(digitsInteger, digitsDecimal, isSigned);
}

NumberPattern WidestPattern::Get() const {
    NumberPattern pattern = widest_;
    pattern.isSigned = pattern.isSigned || asked_.isSigned;
    if (!asked_.IsKnown()) return pattern;
    pattern.digitsInteger = std::max(pattern.digitsInteger, asked_.digitsInteger);
    pattern.digitsDecimal = std::max(pattern.digitsDecimal, asked_.digitsDecimal);
    return pattern;
}

}  // namespace ZT_PLUGIN
