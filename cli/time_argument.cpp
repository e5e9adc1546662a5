#include "time_argument.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <optional>

#include "wrong_usage.h"

namespace zentor_cli {

namespace {

constexpr std::int64_t kFirstSecond = std::numeric_limits<std::int32_t>::min();
constexpr std::int64_t kLastSecond = std::numeric_limits<std::int32_t>::max();
constexpr std::int64_t kFarSeconds = 1000000000000;  // beyond all times that there are

struct DecimalSeconds {
    std::int64_t whole;
    std::string digits;  // after the point; they count upwards from `whole`, also below 0
};

struct FractionOfSeconds {
    std::int64_t value;
    std::uint32_t scale;
};

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

bool IsAllDigits(std::string_view text) { return !text.empty() && std::all_of(text.begin(), text.end(), IsDigit); }

// Takes the sign off the front; whether it is "-".
bool TakeSign(std::string_view& text) {
    const bool isNegative = text.starts_with('-');
    if (isNegative || text.starts_with('+')) text.remove_prefix(1);
    return isNegative;
}

// False for a text that is no number, or one that does not fit.
template <class Number>
bool TakeWhole(std::string_view text, Number& number) {
    return IsAllDigits(text) && std::from_chars(text.data(), text.data() + text.size(), number).ec == std::errc();
}

std::optional<DecimalSeconds> ParseDecimal(std::string_view text) {
    const bool isNegative = TakeSign(text);
    const std::size_t point = text.find('.');
    const std::string_view whole = text.substr(0, point);
    std::string digits(point == std::string_view::npos ? "0" : text.substr(point + 1));
    if (!IsAllDigits(whole) || !IsAllDigits(digits)) return std::nullopt;
    std::int64_t seconds = 0;
    if (!TakeWhole(whole, seconds) || seconds > kFarSeconds) seconds = kFarSeconds;
    if (!isNegative) return DecimalSeconds{seconds, digits};
    const std::size_t last = digits.find_last_not_of('0');
    if (last == std::string::npos) return DecimalSeconds{-seconds, digits};
    for (std::size_t i = 0; i <= last; ++i) digits[i] = static_cast<char>('0' + '9' - digits[i]);
    ++digits[last];
    return DecimalSeconds{-seconds - 1, digits};
}

std::optional<FractionOfSeconds> ParseFraction(std::string_view text) {
    const bool isNegative = TakeSign(text);
    const std::size_t slash = text.find('/');
    if (slash == std::string_view::npos) return std::nullopt;
    FractionOfSeconds fraction{};
    if (!TakeWhole(text.substr(0, slash), fraction.value)) return std::nullopt;
    if (!TakeWhole(text.substr(slash + 1), fraction.scale) || fraction.scale == 0) return std::nullopt;
    if (isNegative) fraction.value = -fraction.value;
    return fraction;
}

// 0.DIGITS x factor, rounded down, whatever the number of digits.
std::uint32_t MultiplyDown(std::string_view digits, std::uint32_t factor) {
    std::uint64_t carried = 0;
    for (std::size_t i = digits.size(); i-- > 0;) {
        carried = (static_cast<std::uint64_t>(digits[i] - '0') * factor + carried) / 10;
    }
    return static_cast<std::uint32_t>(carried);
}

// A UTC time with as many decimals of a second as the document's times have; other texts as they are.
std::string WithDecimals(const std::string& time, std::size_t count) {
    constexpr std::size_t kSecondsEnd = std::string_view("2026-01-31T00:00:00").size();
    if (time.size() < kSecondsEnd) return time;
    std::size_t end = kSecondsEnd;
    std::string decimals;
    if (end != time.size() && time[end] == '.') {
        for (++end; end != time.size() && IsDigit(time[end]); ++end) decimals += time[end];
        if (decimals.empty()) return time;
    }
    decimals.resize(count, '0');
    return time.substr(0, kSecondsEnd) + (count == 0 ? "" : "." + decimals) + time.substr(end);
}

}  // namespace

TimeArguments::TimeArguments(const zentor::TimeForm& form, std::string sampleTime)
    : form_(form), sampleTime_(std::move(sampleTime)), decimals_(ParseSampleTime(sampleTime_).decimals.size()) {}

Moment TimeArguments::Parse(const std::string& option, const std::string& text) const {
    if (auto seconds = ParseDecimal(text)) return CutDown(seconds->whole, std::move(seconds->digits));
    if (const auto fraction = ParseFraction(text)) return CutDown(fraction->value, fraction->scale);
    zentor::Instant instant;
    const std::string time = form_.Rate() == nullptr ? WithDecimals(text, decimals_) : text;
    if (form_.Parse(time, instant)) return {instant.whole, std::string(instant.decimals)};
    const std::string expected = sampleTime_.empty() ? "of the document's form" : "such as " + sampleTime_;
    throw WrongUsage(option + ": expected seconds (1.5, 3/2, -2) or a time " + expected + ", not \"" + text + '"');
}

zentor::Instant TimeArguments::ParseSampleTime(std::string_view time) const {
    zentor::Instant instant;
    form_.Parse(time, instant);
    return instant;
}

Moment TimeArguments::CutDown(std::int64_t seconds, std::string digits) const {
    const zentor::FrameRate* const rate = form_.Rate();
    if (rate == nullptr) {
        digits.resize(decimals_, '0');
        return {seconds, std::move(digits)};
    }
    // Frames begin at whole multiples of this part of a second, so that nothing is lost.
    const std::uint32_t part = rate->numerator;
    return CutDown(std::clamp(seconds, kFirstSecond, kLastSecond) * part + MultiplyDown(digits, part), part);
}

Moment TimeArguments::CutDown(std::int64_t value, std::uint32_t scale) const {
    const zentor::QueryTime time = form_.At(value, scale);
    Moment moment{time.whole, {}};
    std::uint64_t rest = time.rest;
    for (std::size_t i = 0; i < decimals_; ++i) {
        rest *= 10;
        moment.decimals += static_cast<char>('0' + rest / time.scale);
        rest %= time.scale;
    }
    return moment;
}

ZT_Time TimeArguments::QueryTime(std::int64_t whole) const {
    if (const zentor::FrameRate* const rate = form_.Rate()) {
        const zentor::TimeValue time = zentor::TimeOfFrame(whole, *rate);
        return {time.numerator, time.denominator};
    }
    return {static_cast<std::int32_t>(std::clamp(whole, kFirstSecond, kLastSecond)), 1};
}

}  // namespace zentor_cli
