// Frame-based times: fractions of seconds, and SMPTE time codes hh:mm:ss:ff, with drop frame for 29.97 and 59.94
// frames a second. Nothing here fails or overflows, whatever the numbers. Needs C++17 and nothing else, not even the
// library.
//
//     const zentor::FrameRate rate{30000, 1001, true};
//     std::int64_t frame = 0;
//     if (zentor::ParseTimeCode("00:01:00:02", rate, frame)) ...        // 1800
//     const zentor::TimeValue begin = zentor::TimeOfFrame(frame, rate);  // 30030 / 500 seconds, for a ZT_Time
#ifndef ZENTOR_TIME_CODE_H
#define ZENTOR_TIME_CODE_H

#include <algorithm>  // calls of min and max stand in parentheses: some systems have macros with these names
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <numeric>
#include <string_view>

namespace zentor {

// Seconds, as a fraction.
struct TimeValue {
    std::int32_t numerator;
    std::uint32_t denominator;
};

// Frames a second, as a fraction; neither part is 0.
struct FrameRate {
    std::uint32_t numerator;
    std::uint32_t denominator;
    bool dropFrame;
};

// In lowest terms; unchanged when the denominator is 0. `wasReduced`: whether the two had a common divisor.
TimeValue Reduce(TimeValue time, bool* wasReduced = nullptr);

// time x numerator / denominator: exact where that fits, else a fraction a little farther from 0 that does, and the
// last number there is beyond the range. Returns 0; 1, with a product of {0, 0}, when a denominator is 0.
std::uint32_t Multiply(TimeValue time, std::uint32_t numerator, std::uint32_t denominator, TimeValue& product);

// The frame rate nearest to a number above 0: 30000/1001 for 29.97, and so on for its relatives.
FrameRate FrameRateNear(double framesPerSecond, bool dropFrame);

// Frames that a time code counts in a second: the whole number next to the rate, at least 1.
std::uint32_t NominalRate(const FrameRate& rate);

// hh:mm:ss:ff, with three digits of frames at rates from 100 on.
std::size_t TimeCodeWidth(const FrameRate& rate);
inline constexpr std::size_t kWidestTimeCode = 12;
inline constexpr std::uint32_t kHighestNominalRate = 1000;  // from there on three digits do not hold the frames

// How many different time codes there are.
std::int64_t FramesPerDay(const FrameRate& rate);

// The frame that is shown at ticks / ticksPerSecond seconds: the last one that begins at or before it. The scale is not
// 0. Seconds beyond 32 bits count as the first or the last in them.
std::int64_t FrameAt(std::int64_t ticks, std::uint32_t ticksPerSecond, const FrameRate& rate);

// The time code of a frame from 0 on; a day later it is the same again. Returns the end of the text, which is
// TimeCodeWidth bytes long when the nominal rate is at most kHighestNominalRate.
char* FormatTimeCode(std::int64_t frame, const FrameRate& rate, char* out);

// False for a text that is no time code of this rate, or names a frame that is dropped. Any byte may separate the
// numbers: many write a semicolon before the frames when they are counted with drop frame.
bool ParseTimeCode(std::string_view text, const FrameRate& rate, std::int64_t& frame);

// Reads many time codes of one rate. A label that drop frame leaves out names the frame that counting gives: that of a
// label shortly before it.
class TimeCodeReader {
public:
    explicit TimeCodeReader(const FrameRate& rate)
        : rate_(rate), width_(TimeCodeWidth(rate)), nominal_(NominalRate(rate)) {}

    // False for a text that is no time code of this rate.
    bool Read(std::string_view text, std::int64_t& frame) const;

private:
    FrameRate rate_;
    std::size_t width_;
    std::uint32_t nominal_;
};

// When a frame begins: exact where that fits, else a time a little later, at which that frame of a day is still shown
// at rates from 1 to 1000 frames a second.
TimeValue TimeOfFrame(std::int64_t frame, const FrameRate& rate);

// ---------------------------------------------------------------------------------------------------------------------

namespace time_private {

// Whole division that is rounded down, below zero too.
struct Division {
    std::int64_t quotient;
    std::int64_t rest;  // from 0 up to the divisor
};

// The divisor is above 0.
inline Division DivideDown(std::int64_t number, std::int64_t divisor) {
    const Division division = {number / divisor, number % divisor};
    return division.rest < 0 ? Division{division.quotient - 1, division.rest + divisor} : division;
}

inline bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Writes the last `digits` digits of a number, with zeros in front; returns the end.
inline char* PutDecimal(char* out, std::uint64_t number, std::size_t digits) {
    for (std::size_t at = digits; at-- > 0; number /= 10) out[at] = static_cast<char>('0' + number % 10);
    return out + digits;
}

// False unless the text is all digits. At most 9 of them.
inline bool TakeDecimal(std::string_view text, std::uint32_t& number) {
    number = 0;
    for (const char c : text) {
        if (!IsDigit(c)) return false;
        number = number * 10 + static_cast<std::uint32_t>(c - '0');
    }
    return true;
}

inline constexpr std::uint64_t kLargestNumerator = (std::numeric_limits<std::int32_t>::max)();
inline constexpr std::uint64_t kLargestDenominator = (std::numeric_limits<std::uint32_t>::max)();

// Magnitude x / y with both parts in range, from a fraction in lowest terms that is not.
inline void Approximate(std::uint64_t& x, std::uint64_t& y, std::uint64_t largest) {
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
    rest = (std::min)(rest, y);  // rounded up and down, it may have gone past a whole one
    const std::uint64_t denominator = (std::min)(kLargestDenominator, largest / (whole + 1));
    x = whole * denominator + (rest * denominator + y - 1) / y;
    y = denominator;
}

// The numbers that drop frame leaves out and the stretches between them.
struct DropFrameCounts {
    std::int64_t dropped;     // at the start of every minute but each tenth
    std::int64_t minute;      // frames of a minute that drops none
    std::int64_t tenMinutes;  // real frames
};

inline DropFrameCounts CountsOf(const FrameRate& rate) {
    return NominalRate(rate) == 60 ? DropFrameCounts{4, 3600, 35964} : DropFrameCounts{2, 1800, 17982};
}

// The number that a time code without gaps would have where drop frame shows this frame.
inline std::int64_t NumberOfFrame(std::int64_t frame, const FrameRate& rate) {
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

inline std::int64_t FrameOfNumber(std::int64_t number, const FrameRate& rate) {
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
inline bool ReadLabel(std::string_view text, std::uint32_t nominalRate, Label& label) {
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

inline bool IsLeftOut(const Label& label, const FrameRate& rate) {
    return label.seconds == 0 && label.minutes % 10 != 0 && label.frames < CountsOf(rate).dropped;
}

inline std::int64_t FrameOfLabel(const Label& label, const FrameRate& rate, std::uint32_t nominalRate) {
    const std::int64_t seconds = (std::int64_t{label.hours} * 60 + label.minutes) * 60 + label.seconds;
    return FrameOfNumber(seconds * nominalRate + label.frames, rate);
}

}  // namespace time_private

inline TimeValue Reduce(TimeValue time, bool* wasReduced) {
    const auto magnitude = static_cast<std::uint32_t>(std::abs(std::int64_t{time.numerator}));
    const std::uint32_t divisor = time.denominator == 0 ? 1 : std::gcd(magnitude, time.denominator);
    if (wasReduced != nullptr) *wasReduced = divisor != 1;
    if (divisor == 1 || divisor > time_private::kLargestNumerator) return time;
    return {time.numerator / static_cast<std::int32_t>(divisor), time.denominator / divisor};
}

inline std::uint32_t Multiply(TimeValue time, std::uint32_t numerator, std::uint32_t denominator, TimeValue& product) {
    product = {0, 0};
    if (time.denominator == 0 || denominator == 0) return 1;
    std::uint64_t x = static_cast<std::uint64_t>(std::abs(std::int64_t{time.numerator})) * numerator;
    std::uint64_t y = std::uint64_t{time.denominator} * denominator;
    const std::uint64_t divisor = std::gcd(x, y);
    x /= divisor;
    y /= divisor;
    const bool isNegative = time.numerator < 0;
    const std::uint64_t largest = isNegative ? time_private::kLargestNumerator + 1 : time_private::kLargestNumerator;
    if (x > largest || y > time_private::kLargestDenominator) time_private::Approximate(x, y, largest);
    const auto magnitude = static_cast<std::int64_t>(x);
    product = {static_cast<std::int32_t>(isNegative ? -magnitude : magnitude), static_cast<std::uint32_t>(y)};
    return 0;
}

inline FrameRate FrameRateNear(double framesPerSecond, bool dropFrame) {
    constexpr double kRounding = 0.00001;  // of the rate: 119.88 is as near to its fraction as 29.97 is
    constexpr double kParts = 1e6;
    for (const std::uint32_t whole : {24u, 30u, 48u, 60u, 120u, 240u}) {
        const double near = whole * 1000.0 / 1001;
        if (std::abs(framesPerSecond - near) < near * kRounding) return {whole * 1000, 1001, dropFrame};
    }
    constexpr auto kLargest = static_cast<double>(time_private::kLargestDenominator);
    if (framesPerSecond > kLargest / kParts || framesPerSecond == std::trunc(framesPerSecond)) {
        return {static_cast<std::uint32_t>((std::min)(framesPerSecond, kLargest)), 1, dropFrame};
    }
    return {static_cast<std::uint32_t>((std::max)(framesPerSecond * kParts, 1.0)), static_cast<std::uint32_t>(kParts),
            dropFrame};
}

inline std::uint32_t NominalRate(const FrameRate& rate) {
    const double nominal = std::floor(double{1.0} * rate.numerator / rate.denominator + 0.5);
    return (std::max)(static_cast<std::uint32_t>(nominal), 1u);
}

inline std::size_t TimeCodeWidth(const FrameRate& rate) { return rate.numerator / rate.denominator > 99 ? 12 : 11; }

inline std::int64_t FramesPerDay(const FrameRate& rate) {
    constexpr std::int64_t kSeconds = 86400;
    return time_private::FrameOfNumber(kSeconds * NominalRate(rate), rate);
}

inline std::int64_t FrameAt(std::int64_t ticks, std::uint32_t ticksPerSecond, const FrameRate& rate) {
    // As many seconds as keep the products below in 64 bits.
    constexpr std::int64_t kFirst = (std::numeric_limits<std::int32_t>::min)();
    constexpr std::int64_t kLast = (std::numeric_limits<std::int32_t>::max)();
    time_private::Division time = time_private::DivideDown(ticks, ticksPerSecond);
    if (time.quotient < kFirst) time = {kFirst, 0};
    if (time.quotient > kLast) time = {kLast, 0};
    // The frames of the rest are taken down to a whole number before the division by the denominator, which loses
    // nothing: what is below one cannot take a whole sum over a multiple of the denominator.
    const std::uint64_t restPart = static_cast<std::uint64_t>(time.rest) * rate.numerator / ticksPerSecond;
    return time_private::DivideDown(time.quotient * rate.numerator + static_cast<std::int64_t>(restPart),
                                    rate.denominator)
        .quotient;
}

inline char* FormatTimeCode(std::int64_t frame, const FrameRate& rate, char* out) {
    const std::int64_t number = time_private::NumberOfFrame(frame % FramesPerDay(rate), rate);
    const std::int64_t nominal = NominalRate(rate);
    const std::int64_t seconds = number / nominal;
    out = time_private::PutDecimal(out, static_cast<std::uint64_t>(seconds / 3600), 2);
    *out++ = ':';
    out = time_private::PutDecimal(out, static_cast<std::uint64_t>(seconds / 60 % 60), 2);
    *out++ = ':';
    out = time_private::PutDecimal(out, static_cast<std::uint64_t>(seconds % 60), 2);
    *out++ = ':';
    return time_private::PutDecimal(out, static_cast<std::uint64_t>(number % nominal), TimeCodeWidth(rate) - 9);
}

inline bool ParseTimeCode(std::string_view text, const FrameRate& rate, std::int64_t& frame) {
    time_private::Label label;
    const std::uint32_t nominal = NominalRate(rate);
    if (text.size() != TimeCodeWidth(rate) || !time_private::ReadLabel(text, nominal, label)) return false;
    if (rate.dropFrame && time_private::IsLeftOut(label, rate)) return false;
    frame = time_private::FrameOfLabel(label, rate, nominal);
    return true;
}

inline bool TimeCodeReader::Read(std::string_view text, std::int64_t& frame) const {
    time_private::Label label;
    if (text.size() != width_ || !time_private::ReadLabel(text, nominal_, label)) return false;
    frame = time_private::FrameOfLabel(label, rate_, nominal_);
    return true;
}

inline TimeValue TimeOfFrame(std::int64_t frame, const FrameRate& rate) {
    constexpr std::int64_t kMost = (std::numeric_limits<std::int32_t>::max)();
    TimeValue time;
    Multiply({static_cast<std::int32_t>(std::clamp(frame, -kMost, kMost)), 1}, rate.denominator, rate.numerator, time);
    return time;
}

}  // namespace zentor

#endif
