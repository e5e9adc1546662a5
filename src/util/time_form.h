// The one form that all time strings of a document have: time codes of a frame rate, or dates and times of day.
#pragma once

#include <boost/variant.hpp>
#include <compare>
#include <cstdint>
#include <optional>
#include <string_view>

#include "util/time_code.h"

namespace zentor {

// A time string read: what samples are ordered by.
struct Instant {
    std::int64_t whole = 0;     // frames, or seconds since 1970
    std::string_view decimals;  // of the second, borrowed from the text; as many in all times of a document

    std::strong_ordering operator<=>(const Instant& other) const {
        const auto order = whole <=> other.whole;
        return std::is_neq(order) ? order : decimals <=> other.decimals;
    }
    bool operator==(const Instant& other) const = default;
};

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
    const FrameRate* Rate() const { return boost::get<FrameRate>(&form_); }
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
    boost::variant<FrameRate, Utc> form_;
    std::optional<TimeCodeReader> recorded_;  // of time codes
};

std::strong_ordering operator<=>(const Instant& instant, const QueryTime& time);

}  // namespace zentor
