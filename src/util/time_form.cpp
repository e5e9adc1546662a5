#include "util/time_form.h"

#include <algorithm>

#include "util/floor_division.h"
#include "util/utc_time.h"

namespace zentor {

namespace {

// Of a time code.
bool HasUsualSeparators(std::string_view text) {
    return text[2] == ':' && text[5] == ':' && (text[8] == ':' || text[8] == ';');
}

}  // namespace

std::uint64_t TimeForm::Width() const {
    if (const FrameRate* const rate = Rate()) return TimeCodeWidth(*rate);
    const Utc& utc = boost::get<Utc>(form_);
    constexpr std::uint64_t kToSeconds = 19;  // yyyy-mm-ddThh:mm:ss
    return kToSeconds + (utc.precision == 0 ? 0 : utc.precision + 1) + (utc.isGmt ? 1 : 6);
}

bool TimeForm::Parse(std::string_view text, Instant& instant) const {
    if (const FrameRate* const rate = Rate()) {
        instant.decimals = {};
        return ParseTimeCode(text, *rate, instant.whole);
    }
    const Utc& utc = boost::get<Utc>(form_);
    UtcTime time;
    if (!ParseUtc(text, time) || time.decimals.size() != utc.precision || EndsInZ(text) != utc.isGmt) return false;
    instant = {time.seconds, time.decimals};
    return true;
}

bool TimeForm::ParseRecorded(std::string_view text, Instant& instant) const {
    if (!recorded_) return Parse(text, instant);
    instant.decimals = {};
    return recorded_->Read(text, instant.whole);
}

bool TimeForm::ParseForDocument(std::string_view text, Instant& instant) const {
    return Parse(text, instant) && (Rate() == nullptr || HasUsualSeparators(text));
}

bool TimeForm::IsTimeOfMode(std::string_view text) const {
    if (Rate() != nullptr) {
        Instant instant;
        return ParseForDocument(text, instant);
    }
    UtcTime time;
    return ParseUtc(text, time);
}

char* TimeForm::Format(std::int64_t ticks, std::uint32_t ticksPerSecond, char* out, Instant& instant) const {
    if (ticksPerSecond == 0) return nullptr;
    if (const FrameRate* const rate = Rate()) {
        const std::int64_t frame = FrameAt(ticks, ticksPerSecond, *rate);
        if (frame < 0 || frame >= FramesPerDay(*rate) || NominalRate(*rate) > kHighestNominalRate) return nullptr;
        instant = {frame, {}};
        return FormatTimeCode(frame, *rate, out);
    }
    constexpr std::uint32_t kMostDecimals = 9;
    constexpr std::uint64_t kNanoseconds = 1000000000;
    const Utc& utc = boost::get<Utc>(form_);
    const Division time = DivideDown(ticks, ticksPerSecond);
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

QueryTime TimeForm::At(std::int64_t value, std::uint32_t scale) const {
    if (const FrameRate* const rate = Rate()) {
        return {std::min(FrameAt(value, scale, *rate), FramesPerDay(*rate) - 1), 0, 1};
    }
    const Division time = DivideDown(value, scale);
    return {time.quotient, static_cast<std::uint32_t>(time.rest), scale};
}

std::strong_ordering operator<=>(const Instant& instant, const QueryTime& time) {
    if (instant.whole != time.whole) return instant.whole <=> time.whole;
    // The decimals of the moment come one by one, as many as the time string has.
    std::uint64_t rest = time.rest;
    for (const char c : instant.decimals) {
        rest *= 10;
        const auto digit = static_cast<char>('0' + rest / time.scale);
        rest %= time.scale;
        if (c != digit) return c <=> digit;
    }
    return std::strong_ordering::equal;
}

}  // namespace zentor
