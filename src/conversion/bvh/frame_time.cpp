#include "conversion/bvh/frame_time.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "format/frame_rate.h"
#include "util/number_text.h"

namespace zentor {

namespace {

// Of a number as it is printed, were it without its exponent; below 0 for whole tens and so on.
int CountDecimals(std::string_view number) {
    const std::size_t digitsEnd = std::min(number.find_first_of("eE"), number.size());
    const std::size_t point = std::min(number.find('.'), digitsEnd);
    const auto decimals = static_cast<int>(digitsEnd - std::min(point + 1, digitsEnd));
    std::string_view exponent = number.substr(std::min(digitsEnd + 1, number.size()));
    if (exponent.starts_with('+')) exponent.remove_prefix(1);
    int shift = 0;
    std::from_chars(exponent.data(), exponent.data() + exponent.size(), shift);
    return decimals - shift;
}

// Rates are counted in whole frames, but for 29.97 and 59.94. A time that none of them gives when it is printed with so
// many decimals is cut to the next lower whole rate, after allowing for a last decimal that was rounded up.
FrameRate RateOf(double frameTime, int decimals, bool& isExact) {
    constexpr double kHalf = 0.5 * (1 + 1e-9);  // printers differ in which way they round a half
    const double largestDistance = kHalf * std::pow(10.0, -decimals);
    const auto isPrintedSo = [&](const FrameRate& rate) {
        return std::abs(frameTime - double{1.0} * rate.denominator / rate.numerator) <= largestDistance;
    };
    isExact = true;
    const FrameRate nearest{static_cast<std::uint32_t>(std::lround(1 / frameTime)), 1, false};
    if (nearest.numerator != 0 && isPrintedSo(nearest)) return nearest;
    if (isPrintedSo(kRate2997)) return kRate2997;
    if (isPrintedSo(kRate5994)) return kRate5994;
    isExact = false;
    constexpr double kRounding = 1 + 5e-5;
    const auto hundredths = static_cast<std::uint32_t>(100 / frameTime * kRounding);
    if (hundredths == 2997) return kRate2997;
    if (hundredths == 5994) return kRate5994;
    return {hundredths / 100, 1, false};
}

}  // namespace

bool ParseFrameTime(std::string_view text, FrameRate& rate, bool& isExact) {
    constexpr double kShortest = 0.001;
    const char* const end = text.data() + text.size();
    double frameTime = 0;
    if (text.empty() || ParseNumber(text.data(), end, frameTime) != end || !(frameTime > kShortest)) return false;
    rate = RateOf(frameTime, CountDecimals(text), isExact);
    return rate.numerator != 0;
}

}  // namespace zentor
