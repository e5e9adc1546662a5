#include "fields.h"

#include <charconv>

namespace nmea {

namespace {

constexpr int kMaxDecimals = 9;
constexpr std::int64_t kNanosecondsPerSecond = 1'000'000'000;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

bool ReadDigits(std::string_view text, std::int64_t& value) {
    if (text.empty() || text.size() > 18) return false;
    value = 0;
    for (const char c : text) {
        if (!IsDigit(c)) return false;
        value = value * 10 + (c - '0');
    }
    return true;
}

struct Decimal {
    std::int64_t whole;
    std::int64_t fraction;  // in units of the last decimal
    int decimals;           // at most kMaxDecimals
};

// Digits, and perhaps a point with any number of decimals after it.
bool ReadDecimal(std::string_view text, Decimal& decimal) {
    const auto point = text.find('.');
    if (!ReadDigits(text.substr(0, point), decimal.whole)) return false;
    decimal.fraction = 0;
    decimal.decimals = 0;
    if (point == std::string_view::npos) return true;
    for (const char c : text.substr(point + 1)) {
        if (!IsDigit(c)) return false;
        if (decimal.decimals == kMaxDecimals) continue;
        decimal.fraction = decimal.fraction * 10 + (c - '0');
        ++decimal.decimals;
    }
    return true;
}

std::int64_t PowerOfTen(int exponent) {
    std::int64_t power = 1;
    for (; exponent > 0; --exponent) power *= 10;
    return power;
}

// Days since 1970-01-01 in the Gregorian calendar; false when there is no such day. Years begin with March, so that the
// leap day is the last one.
bool DayNumber(std::int64_t year, std::int64_t month, std::int64_t day, std::int64_t& number) {
    const bool isLeap = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
    constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (month < 1 || month > 12 || day < 1 || day > kDays[month - 1] + (month == 2 && isLeap ? 1 : 0)) return false;
    const std::int64_t marchYear = month > 2 ? year : year - 1;
    const std::int64_t marchMonth = (month + 9) % 12;
    number = marchYear * 365 + marchYear / 4 - marchYear / 100 + marchYear / 400 + (marchMonth * 153 + 2) / 5 + day -
             719'469;
    return true;
}

}  // namespace

bool ReadTime(std::string_view field, std::optional<TimeOfDay>& time) {
    if (field.empty()) return true;
    Decimal decimal{};
    if (field.substr(0, field.find('.')).size() != 6 || !ReadDecimal(field, decimal)) return false;
    const std::int64_t hours = decimal.whole / 10'000;
    const std::int64_t minutes = decimal.whole / 100 % 100;
    const std::int64_t seconds = decimal.whole % 100;
    if (hours > 23 || minutes > 59 || seconds > 60) return false;
    const std::int64_t nanoseconds = decimal.fraction * PowerOfTen(kMaxDecimals - decimal.decimals);
    time = TimeOfDay{((hours * 60 + minutes) * 60 + seconds) * kNanosecondsPerSecond + nanoseconds,
                     static_cast<std::uint32_t>(decimal.decimals)};
    return true;
}

bool ReadDate(std::string_view field, std::optional<std::int64_t>& day) {
    if (field.empty()) return true;
    std::int64_t digits = 0;
    std::int64_t number = 0;
    if (field.size() != 6 || !ReadDigits(field, digits)) return false;
    const std::int64_t year = digits % 100;
    if (!DayNumber(year + (year >= 80 ? 1900 : 2000), digits / 100 % 100, digits / 10'000, number)) return false;
    day = number;
    return true;
}

bool ReadDate(std::string_view day, std::string_view month, std::string_view year, std::optional<std::int64_t>& date) {
    if (day.empty() && month.empty() && year.empty()) return true;
    std::int64_t values[3] = {};
    std::int64_t number = 0;
    if (!ReadDigits(day, values[0]) || !ReadDigits(month, values[1]) || !ReadDigits(year, values[2])) return false;
    if (values[2] < 1980 || values[2] > 2199 || !DayNumber(values[2], values[1], values[0], number)) return false;
    date = number;
    return true;
}

bool ReadNumber(std::string_view field, double minimum, double maximum, std::optional<double>& number) {
    if (field.empty()) return true;
    const std::string_view digits = field.front() == '-' ? field.substr(1) : field;
    if (digits.empty() || !(IsDigit(digits.front()) || digits.front() == '.')) return false;  // no words for infinity
    double value = 0;
    const char* const end = field.data() + field.size();
    const auto result = std::from_chars(field.data(), end, value, std::chars_format::fixed);
    if (result.ec != std::errc() || result.ptr != end || !(value >= minimum && value <= maximum)) return false;
    number = value == 0 ? 0 : value;  // without a sign
    return true;
}

bool ReadAngle(std::string_view field, std::string_view hemisphere, char positive, char negative, int maxDegrees,
               std::optional<double>& degrees) {
    if (field.empty() && hemisphere.empty()) return true;
    Decimal decimal{};
    if (hemisphere.size() != 1 || (hemisphere[0] != positive && hemisphere[0] != negative)) return false;
    if (!ReadDecimal(field, decimal) || decimal.whole / 100 > maxDegrees || decimal.whole % 100 > 59) return false;
    // Minutes in units of their last decimal, then degrees with four more decimals, rounded to the nearest.
    const std::int64_t scale = PowerOfTen(decimal.decimals);
    const std::int64_t minutes = (decimal.whole / 100 * 60 + decimal.whole % 100) * scale + decimal.fraction;
    if (minutes > std::int64_t{60} * maxDegrees * scale) return false;
    const std::int64_t digits = (minutes * 10'000 + 30) / 60;
    const double value = static_cast<double>(digits) / static_cast<double>(PowerOfTen(decimal.decimals + 4));
    degrees = hemisphere[0] == negative && value != 0 ? -value : value;
    return true;
}

}  // namespace nmea
