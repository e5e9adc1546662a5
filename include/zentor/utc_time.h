// Dates and times of day as texts: yyyy-mm-ddThh:mm:ss, a point and decimals of the second if there are any, and "Z" or
// an offset such as +01:30. Needs C++17 and nothing else, not even the library.
#ifndef ZENTOR_UTC_TIME_H
#define ZENTOR_UTC_TIME_H

#include <cstdint>
#include <cstring>
#include <string_view>

#include "zentor/time_code.h"

namespace zentor {

// Seconds since 1970-01-01T00:00:00Z without leap seconds, and the decimals of the second, which are borrowed from the
// text.
struct UtcTime {
    std::int64_t seconds = 0;
    std::string_view decimals;
};

// Years 0000 to 9999; a second of 60 is the first of the next minute. False for a text that is no such time.
bool ParseUtc(std::string_view text, UtcTime& time);

// Whether the text ends in "Z" rather than in an offset; it is a time.
inline bool EndsInZ(std::string_view text) { return text.back() == 'Z'; }

// From 0000-01-01T00:00:00Z to the last second of the year 9999.
inline constexpr std::int64_t kFirstUtcSecond = -62167219200;
inline constexpr std::int64_t kLastUtcSecond = 253402300799;

// Writes a time with `precision` decimals, from 0 to 9, and "Z" or "+00:00"; returns the end. `seconds` within the
// bounds above, `nanoseconds` below 1e9; what the precision does not show is cut off.
char* FormatUtc(std::int64_t seconds, std::uint32_t nanoseconds, std::uint32_t precision, bool isGmt, char* out);

// ---------------------------------------------------------------------------------------------------------------------

namespace time_private {

inline constexpr std::int64_t kSecondsPerDay = 86400;
inline constexpr std::int64_t kDaysPerEra = 146097;  // 400 years

struct Date {
    std::int64_t year;
    std::uint32_t month;  // from 1
    std::uint32_t day;    // from 1
};

// Years are counted from March, so that the leap day is the last of its year.
inline std::int64_t DaysSince1970(const Date& date) {
    const std::int64_t year = date.month <= 2 ? date.year - 1 : date.year;
    const std::int64_t era = (year >= 0 ? year : year - 399) / 400;
    const std::int64_t yearOfEra = year - era * 400;
    const std::int64_t month = (date.month + 9) % 12;
    const std::int64_t dayOfYear = (153 * month + 2) / 5 + date.day - 1;
    return era * kDaysPerEra + yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear - 719468;
}

inline Date DateOf(std::int64_t daysSince1970) {
    const std::int64_t days = daysSince1970 + 719468;
    const std::int64_t era = (days >= 0 ? days : days - kDaysPerEra + 1) / kDaysPerEra;
    const std::int64_t dayOfEra = days - era * kDaysPerEra;
    const std::int64_t yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const std::int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const std::int64_t month = (5 * dayOfYear + 2) / 153;
    const auto day = static_cast<std::uint32_t>(dayOfYear - (153 * month + 2) / 5 + 1);
    const auto calendarMonth = static_cast<std::uint32_t>(month < 10 ? month + 3 : month - 9);
    return {yearOfEra + era * 400 + (calendarMonth <= 2 ? 1 : 0), calendarMonth, day};
}

inline std::uint32_t DaysInMonth(std::uint32_t year, std::uint32_t month) {
    constexpr std::uint32_t kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool isLeap = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
    return kDays[month - 1] + (month == 2 && isLeap ? 1 : 0);
}

inline bool ParseDate(std::string_view text, std::int64_t& days) {
    std::uint32_t year = 0, month = 0, day = 0;
    if (text[4] != '-' || text[7] != '-') return false;
    if (!TakeDecimal(text.substr(0, 4), year) || !TakeDecimal(text.substr(5, 2), month) ||
        !TakeDecimal(text.substr(8, 2), day)) {
        return false;
    }
    if (month < 1 || month > 12 || day < 1 || day > DaysInMonth(year, month)) return false;
    days = DaysSince1970({year, month, day});
    return true;
}

inline bool ParseHoursAndMinutes(std::string_view text, std::int64_t& seconds) {
    std::uint32_t hours = 0, minutes = 0;
    if (text[2] != ':' || !TakeDecimal(text.substr(0, 2), hours) || !TakeDecimal(text.substr(3, 2), minutes)) {
        return false;
    }
    if (hours > 23 || minutes > 59) return false;
    seconds = (std::int64_t{hours} * 60 + minutes) * 60;
    return true;
}

// "Z" or an offset, as seconds east of Greenwich.
inline bool ParseOffset(std::string_view text, std::int64_t& offset) {
    offset = 0;
    if (text == "Z") return true;
    if (text.size() != 6 || (text[0] != '+' && text[0] != '-')) return false;
    if (!ParseHoursAndMinutes(text.substr(1), offset)) return false;
    if (text[0] == '-') offset = -offset;
    return true;
}

}  // namespace time_private

inline bool ParseUtc(std::string_view text, UtcTime& time) {
    constexpr std::size_t kSecondsEnd = 19;
    if (text.size() <= kSecondsEnd || text[10] != 'T' || text[16] != ':') return false;
    std::int64_t days = 0, minutes = 0, offset = 0;
    std::uint32_t seconds = 0;
    if (!time_private::ParseDate(text, days) || !time_private::ParseHoursAndMinutes(text.substr(11, 5), minutes))
        return false;
    if (!time_private::TakeDecimal(text.substr(17, 2), seconds) || seconds > 60) return false;
    std::size_t end = kSecondsEnd;
    time.decimals = {};
    if (text[end] == '.') {
        const std::size_t begin = ++end;
        while (end < text.size() && time_private::IsDigit(text[end])) ++end;
        if (end == begin) return false;
        time.decimals = text.substr(begin, end - begin);
    }
    if (!time_private::ParseOffset(text.substr(end), offset)) return false;
    time.seconds = days * time_private::kSecondsPerDay + minutes + seconds - offset;
    return true;
}

inline char* FormatUtc(std::int64_t seconds, std::uint32_t nanoseconds, std::uint32_t precision, bool isGmt,
                       char* out) {
    constexpr std::uint32_t kDigitsOfNanoseconds = 9;
    const std::int64_t sinceYear0 = seconds - kFirstUtcSecond;
    const time_private::Date date = time_private::DateOf(sinceYear0 / time_private::kSecondsPerDay +
                                                         kFirstUtcSecond / time_private::kSecondsPerDay);
    const auto ofDay = static_cast<std::uint64_t>(sinceYear0 % time_private::kSecondsPerDay);
    out = time_private::PutDecimal(out, static_cast<std::uint64_t>(date.year), 4);
    *out++ = '-';
    out = time_private::PutDecimal(out, date.month, 2);
    *out++ = '-';
    out = time_private::PutDecimal(out, date.day, 2);
    *out++ = 'T';
    out = time_private::PutDecimal(out, ofDay / 3600, 2);
    *out++ = ':';
    out = time_private::PutDecimal(out, ofDay / 60 % 60, 2);
    *out++ = ':';
    out = time_private::PutDecimal(out, ofDay % 60, 2);
    if (precision != 0) {
        char digits[kDigitsOfNanoseconds];
        time_private::PutDecimal(digits, nanoseconds, kDigitsOfNanoseconds);
        *out++ = '.';
        std::memcpy(out, digits, precision);
        out += precision;
    }
    const std::string_view zone = isGmt ? "Z" : "+00:00";
    std::memcpy(out, zone.data(), zone.size());
    return out + zone.size();
}

}  // namespace zentor

#endif
