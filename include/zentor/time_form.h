// The one form that all time strings of a document have: time codes of a frame rate, or dates and times of day.
// Needs C++17 and nothing else, not even the library.
//
//     // What ZT_FileInfoCallbacks have said of the document:
//     const zentor::TimeForm form = zentor::TimeForm(zentor::FrameRate{30, 1, false});
//     zentor::Instant instant;
//     if (form.Parse("00:00:01:15", instant)) ...  // instant.whole is 45
#ifndef ZENTOR_TIME_FORM_H
#define ZENTOR_TIME_FORM_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <variant>

#include "zentor/time_code.h"
#include "zentor/utc_time.h"

namespace zentor {

// A time string read: what samples are ordered by.
struct Instant {
    std::int64_t whole = 0;     // frames, or seconds since 1970
    std::string_view decimals;  // of the second, borrowed from the text; as many in all times of a document
};

// Below, equal to or above 0 as the left time is before, at or after the right one.
inline int Compare(const Instant& left, const Instant& right) {
    if (left.whole != right.whole) return left.whole < right.whole ? -1 : 1;
    // They are few, so that a call would take longer.
    const std::size_t size = std::min(left.decimals.size(), right.decimals.size());
    for (std::size_t k = 0; k < size; ++k) {
        if (left.decimals[k] != right.decimals[k]) return left.decimals[k] < right.decimals[k] ? -1 : 1;
    }
    return left.decimals.size() == right.decimals.size() ? 0 : left.decimals.size() < right.decimals.size() ? -1 : 1;
}
inline bool operator==(const Instant& left, const Instant& right) { return Compare(left, right) == 0; }
inline bool operator!=(const Instant& left, const Instant& right) { return Compare(left, right) != 0; }
inline bool operator<(const Instant& left, const Instant& right) { return Compare(left, right) < 0; }
inline bool operator>(const Instant& left, const Instant& right) { return Compare(left, right) > 0; }
inline bool operator<=(const Instant& left, const Instant& right) { return Compare(left, right) <= 0; }
inline bool operator>=(const Instant& left, const Instant& right) { return Compare(left, right) >= 0; }

// A moment that a query asks for, cut down to what the document's times can say.
struct QueryTime {
    std::int64_t whole;
    std::uint32_t rest;  // of a second, in parts of `scale`; 0 for frames
    std::uint32_t scale;
};

class TimeForm {
public:
    struct Utc {
        std::uint64_t precision;
        bool isGmt;
    };

    explicit TimeForm(const FrameRate& rate) : form_(rate), recorded_(rate) {}
    explicit TimeForm(const Utc& utc) : form_(utc) {}

    // The rate of time codes; null for the other form.
    const FrameRate* Rate() const { return std::get_if<FrameRate>(&form_); }
    // Bytes of every time string.
    std::uint64_t Width() const;
    // The widest that Format writes.
    static constexpr std::size_t kWidestFormatted = 36;

    // False for a text that is no time of this form. Seconds with an offset are those of Greenwich.
    bool Parse(std::string_view text, Instant& instant) const;

    // Parse for the time of a sample that has been recorded: a label that drop frame leaves out, as some recorders
    // write them, is a frame like others, the one that comes out by counting.
    bool ParseRecorded(std::string_view text, Instant& instant) const;

    // Parse for a text that goes into a document as it is: between the numbers of a time code stand colons, or a
    // semicolon before the frames.
    bool ParseForDocument(std::string_view text, Instant& instant) const;

    // Whether a text that goes into a document is a time of the same kind: a time code of the same rate, or any date
    // and time of day.
    bool IsTimeOfMode(std::string_view text) const;

    // The time string at ticks / ticksPerSecond seconds from the start of the day, or since 1970; decimals that the
    // form does not have are cut off. Returns its end; null for a time before or after those that there are, for a
    // scale of 0, a precision above 9, or a rate whose frames need more than three digits. Sets `instant`, which then
    // borrows from `out`.
    char* Format(std::int64_t ticks, std::uint32_t ticksPerSecond, char* out, Instant& instant) const;

    // The moment value / scale seconds; scale is not 0. Frames after the last one of a day count as that one.
    QueryTime At(std::int64_t value, std::uint32_t scale) const;

private:
    std::variant<FrameRate, Utc> form_;
    std::optional<TimeCodeReader> recorded_;  // of time codes
};

// As with two instants; the decimals of the moment count as far as the time string has some.
int Compare(const Instant& instant, const QueryTime& time);

// ---------------------------------------------------------------------------------------------------------------------

namespace time_private {

// Of a time code.
inline bool HasUsualSeparators(std::string_view text) {
    return text[2] == ':' && text[5] == ':' && (text[8] == ':' || text[8] == ';');
}

}  // namespace time_private

inline std::uint64_t TimeForm::Width() const {
    if (const FrameRate* const rate = Rate()) return TimeCodeWidth(*rate);
    const Utc& utc = *std::get_if<Utc>(&form_);
    constexpr std::uint64_t kToSeconds = 19;  // yyyy-mm-ddThh:mm:ss
    return kToSeconds + (utc.precision == 0 ? 0 : utc.precision + 1) + (utc.isGmt ? 1 : 6);
}

inline bool TimeForm::Parse(std::string_view text, Instant& instant) const {
    if (const FrameRate* const rate = Rate()) {
        instant.decimals = {};
        return ParseTimeCode(text, *rate, instant.whole);
    }
    const Utc& utc = *std::get_if<Utc>(&form_);
    UtcTime time;
    if (!ParseUtc(text, time) || time.decimals.size() != utc.precision || EndsInZ(text) != utc.isGmt) return false;
    instant = {time.seconds, time.decimals};
    return true;
}

inline bool TimeForm::ParseRecorded(std::string_view text, Instant& instant) const {
    if (!recorded_) return Parse(text, instant);
    instant.decimals = {};
    return recorded_->Read(text, instant.whole);
}

inline bool TimeForm::ParseForDocument(std::string_view text, Instant& instant) const {
    return Parse(text, instant) && (Rate() == nullptr || time_private::HasUsualSeparators(text));
}

inline bool TimeForm::IsTimeOfMode(std::string_view text) const {
    if (Rate() != nullptr) {
        Instant instant;
        return ParseForDocument(text, instant);
    }
    UtcTime time;
    return ParseUtc(text, time);
}

inline char* TimeForm::Format(std::int64_t ticks, std::uint32_t ticksPerSecond, char* out, Instant& instant) const {
    if (ticksPerSecond == 0) return nullptr;
    if (const FrameRate* const rate = Rate()) {
        const std::int64_t frame = FrameAt(ticks, ticksPerSecond, *rate);
        if (frame < 0 || frame >= FramesPerDay(*rate) || NominalRate(*rate) > kHighestNominalRate) return nullptr;
        instant = {frame, {}};
        return FormatTimeCode(frame, *rate, out);
    }
    constexpr std::uint32_t kMostDecimals = 9;
    constexpr std::uint64_t kNanoseconds = 1000000000;
    const Utc& utc = *std::get_if<Utc>(&form_);
    const time_private::Division time = time_private::DivideDown(ticks, ticksPerSecond);
    if (time.quotient < kFirstUtcSecond || time.quotient > kLastUtcSecond || utc.precision > kMostDecimals) {
        return nullptr;
    }
    const auto nanoseconds =
        static_cast<std::uint32_t>(static_cast<std::uint64_t>(time.rest) * kNanoseconds / ticksPerSecond);
    char* const end = FormatUtc(time.quotient, nanoseconds, static_cast<std::uint32_t>(utc.precision), utc.isGmt, out);
    constexpr std::size_t kDecimals = 20;
    instant = {time.quotient,
               {utc.precision == 0 ? nullptr : out + kDecimals, static_cast<std::size_t>(utc.precision)}};
    return end;
}

inline QueryTime TimeForm::At(std::int64_t value, std::uint32_t scale) const {
    if (const FrameRate* const rate = Rate()) {
        return {(std::min)(FrameAt(value, scale, *rate), FramesPerDay(*rate) - 1), 0, 1};
    }
    const time_private::Division time = time_private::DivideDown(value, scale);
    return {time.quotient, static_cast<std::uint32_t>(time.rest), scale};
}

inline int Compare(const Instant& instant, const QueryTime& time) {
    if (instant.whole != time.whole) return instant.whole < time.whole ? -1 : 1;
    // The decimals of the moment come one by one, as many as the time string has.
    std::uint64_t rest = time.rest;
    for (const char c : instant.decimals) {
        rest *= 10;
        const auto digit = static_cast<char>('0' + rest / time.scale);
        rest %= time.scale;
        if (c != digit) return c < digit ? -1 : 1;
    }
    return 0;
}

}  // namespace zentor

#endif
