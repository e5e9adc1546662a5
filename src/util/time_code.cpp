#include "util/time_code.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

#include "util/decimal_field.h"
#include "util/floor_division.h"

namespace zentor {

namespace {

constexpr std::uint64_t kLargestNumerator = std::numeric_limits<std::int32_t>::max();
constexpr std::uint64_t kLargestDenominator = std::numeric_limits<std::uint32_t>::max();

// Magnitude x / y with both parts in range, from a fraction in lowest terms that is not.
void Approximate(std::uint64_t& x, std::uint64_t& y, std::uint64_t largest) {
    const std::uint64_t whole = x / y;
    std::uint64_t rest = x % y;
    if (whole >= largest) {
        x = largest;
        y = 1;
        return;
    }
    while (y > kLargestDenominator) {
        y >>= 1;
        rest = (rest >> 1) + (rest & 1);
    }
    rest = std::min(rest, y);  // rounded up and down, it may have gone past a whole one
    const std::uint64_t denominator = std::min(kLargestDenominator, largest / (whole + 1));
    x = whole * denominator + (rest * denominator + y - 1) / y;
    y = denominator;
}

// The numbers that drop frame leaves out and the stretches between them.
struct DropFrameCounts {
    std::int64_t dropped;     // at the start of every minute but each tenth
    std::int64_t minute;      // frames of a minute that drops none
    std::int64_t tenMinutes;  // real frames
};

DropFrameCounts CountsOf(const FrameRate& rate) {
    return NominalRate(rate) == 60 ? DropFrameCounts{4, 3600, 35964} : DropFrameCounts{2, 1800, 17982};
}

// The number that a time code without gaps would have where drop frame shows this frame.
std::int64_t NumberOfFrame(std::int64_t frame, const FrameRate& rate) {
    if (!rate.dropFrame) return frame;
    const DropFrameCounts counts = CountsOf(rate);
    const std::int64_t tens = frame / counts.tenMinutes;
    const std::int64_t rest = frame % counts.tenMinutes;
    std::int64_t left = tens * 9 * counts.dropped;
    if (rest >= counts.minute) {
        left += counts.dropped + (rest - counts.minute) / (counts.minute - counts.dropped) * counts.dropped;
    }
    return frame + left;
}

std::int64_t FrameOfNumber(std::int64_t number, const FrameRate& rate) {
    if (!rate.dropFrame) return number;
    const DropFrameCounts counts = CountsOf(rate);
    const std::int64_t tenMinutes = counts.minute * 10;
    const std::int64_t minutes = number % tenMinutes / counts.minute;
    return number - (number / tenMinutes * 9 + minutes) * counts.dropped;
}

// The numbers of a time code.
struct Label {
    std::uint32_t hours = 0;
    std::uint32_t minutes = 0;
    std::uint32_t seconds = 0;
    std::uint32_t frames = 0;
};

// Of a text that is as long as labels are.
bool ReadLabel(std::string_view text, std::uint32_t nominalRate, Label& label) {
    bool isGood = true;
    const auto digit = [&](std::size_t at) {
        const std::uint32_t value = static_cast<unsigned char>(text[at]) - std::uint32_t{'0'};
        isGood = isGood && value <= 9;
        return value;
    };
    const auto two = [&](std::size_t at) { return digit(at) * 10 + digit(at + 1); };
    label = {two(0), two(3), two(6), two(9)};
    if (text.size() > 11) label.frames = label.frames * 10 + digit(11);
    return isGood && label.hours <= 23 && label.minutes <= 59 && label.seconds <= 59 && label.frames < nominalRate;
}

bool IsLeftOut(const Label& label, const FrameRate& rate) {
    return label.seconds == 0 && label.minutes % 10 != 0 && label.frames < CountsOf(rate).dropped;
}

std::int64_t FrameOfLabel(const Label& label, const FrameRate& rate, std::uint32_t nominalRate) {
    const std::int64_t seconds = (std::int64_t{label.hours} * 60 + label.minutes) * 60 + label.seconds;
    return FrameOfNumber(seconds * nominalRate + label.frames, rate);
}

}  // namespace

TimeValue Reduce(TimeValue time, bool* wasReduced) {
    const auto magnitude = static_cast<std::uint32_t>(std::abs(std::int64_t{time.numerator}));
    const std::uint32_t divisor = time.denominator == 0 ? 1 : std::gcd(magnitude, time.denominator);
    if (wasReduced != nullptr) *wasReduced = divisor != 1;
    if (divisor == 1 || divisor > kLargestNumerator) return time;
    return {time.numerator / static_cast<std::int32_t>(divisor), time.denominator / divisor};
}

std::uint32_t Multiply(TimeValue time, std::uint32_t numerator, std::uint32_t denominator, TimeValue& product) {
    product = {0, 0};
    if (time.denominator == 0 || denominator == 0) return 1;
    std::uint64_t x = static_cast<std::uint64_t>(std::abs(std::int64_t{time.numerator})) * numerator;
    std::uint64_t y = std::uint64_t{time.denominator} * denominator;
    const std::uint64_t divisor = std::gcd(x, y);
    x /= divisor;
    y /= divisor;
    const bool isNegative = time.numerator < 0;
    const std::uint64_t largest = isNegative ? kLargestNumerator + 1 : kLargestNumerator;
    if (x > largest || y > kLargestDenominator) Approximate(x, y, largest);
    const auto magnitude = static_cast<std::int64_t>(x);
    product = {static_cast<std::int32_t>(isNegative ? -magnitude : magnitude), static_cast<std::uint32_t>(y)};
    return 0;
}

FrameRate FrameRateNear(double framesPerSecond, bool dropFrame) {
    constexpr double kRounding = 0.00001;  // of the rate: 119.88 is as near to its fraction as 29.97 is
    constexpr double kParts = 1e6;
    for (const std::uint32_t whole : {24u, 30u, 48u, 60u, 120u, 240u}) {
        const double near = whole * 1000.0 / 1001;
        if (std::abs(framesPerSecond - near) < near * kRounding) return {whole * 1000, 1001, dropFrame};
    }
    constexpr auto kLargest = static_cast<double>(kLargestDenominator);
    if (framesPerSecond > kLargest / kParts || framesPerSecond == std::trunc(framesPerSecond)) {
        return {static_cast<std::uint32_t>(std::min(framesPerSecond, kLargest)), 1, dropFrame};
    }
    return {static_cast<std::uint32_t>(std::max(framesPerSecond * kParts, 1.0)), static_cast<std::uint32_t>(kParts),
            dropFrame};
}

std::uint32_t NominalRate(const FrameRate& rate) {
    const double nominal = std::floor(double{1.0} * rate.numerator / rate.denominator + 0.5);
    return std::max(static_cast<std::uint32_t>(nominal), 1u);
}

std::size_t TimeCodeWidth(const FrameRate& rate) { return rate.numerator / rate.denominator > 99 ? 12 : 11; }

std::int64_t FramesPerDay(const FrameRate& rate) {
    constexpr std::int64_t kSeconds = 86400;
    return FrameOfNumber(kSeconds * NominalRate(rate), rate);
}

std::int64_t FrameAt(std::int64_t ticks, std::uint32_t ticksPerSecond, const FrameRate& rate) {
    // As many seconds as keep the products below in 64 bits.
    constexpr std::int64_t kFirst = std::numeric_limits<std::int32_t>::min();
    constexpr std::int64_t kLast = std::numeric_limits<std::int32_t>::max();
    Division time = DivideDown(ticks, ticksPerSecond);
    if (time.quotient < kFirst) time = {kFirst, 0};
    if (time.quotient > kLast) time = {kLast, 0};
    // The frames of the rest are taken down to a whole number before the division by the denominator, which loses
    // nothing: what is below one cannot take a whole sum over a multiple of the denominator.
    const std::uint64_t restPart = static_cast<std::uint64_t>(time.rest) * rate.numerator / ticksPerSecond;
    return DivideDown(time.quotient * rate.numerator + static_cast<std::int64_t>(restPart), rate.denominator).quotient;
}

char* FormatTimeCode(std::int64_t frame, const FrameRate& rate, char* out) {
    const std::int64_t number = NumberOfFrame(frame % FramesPerDay(rate), rate);
    const std::int64_t nominal = NominalRate(rate);
    const std::int64_t seconds = number / nominal;
    out = PutDecimal(out, static_cast<std::uint64_t>(seconds / 3600), 2);
    *out++ = ':';
    out = PutDecimal(out, static_cast<std::uint64_t>(seconds / 60 % 60), 2);
    *out++ = ':';
    out = PutDecimal(out, static_cast<std::uint64_t>(seconds % 60), 2);
    *out++ = ':';
    return PutDecimal(out, static_cast<std::uint64_t>(number % nominal), TimeCodeWidth(rate) - 9);
}

bool ParseTimeCode(std::string_view text, const FrameRate& rate, std::int64_t& frame) {
    Label label;
    const std::uint32_t nominal = NominalRate(rate);
    if (text.size() != TimeCodeWidth(rate) || !ReadLabel(text, nominal, label)) return false;
    if (rate.dropFrame && IsLeftOut(label, rate)) return false;
    frame = FrameOfLabel(label, rate, nominal);
    return true;
}

bool TimeCodeReader::Read(std::string_view text, std::int64_t& frame) const {
    Label label;
    if (text.size() != width_ || !ReadLabel(text, nominal_, label)) return false;
    frame = FrameOfLabel(label, rate_, nominal_);
    return true;
}

TimeValue TimeOfFrame(std::int64_t frame, const FrameRate& rate) {
    constexpr std::int64_t kMost = std::numeric_limits<std::int32_t>::max();
    TimeValue time;
    Multiply({static_cast<std::int32_t>(std::clamp(frame, -kMost, kMost)), 1}, rate.denominator, rate.numerator, time);
    return time;
}

}  // namespace zentor
