// Frame-based times: fractions of seconds, and SMPTE time codes hh:mm:ss:ff, with drop frame for 29.97 and 59.94
// frames a second. Nothing here fails or overflows, whatever the numbers.
#pragma once

#include <cstddef>
#include <cstdint>
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

}  // namespace zentor
