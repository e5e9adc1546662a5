// Dates and times of day as ISO 8601 writes them, and as the documents of converter plug-ins want them. Needs C++14 and
// nothing else, neither the library nor the rest of these headers.
//
//     ZT_PLUGIN::IsoTime time;
//     if (!ZT_PLUGIN::ParseIsoTime("2026-06-01 08:30:05,25+0200", time)) ...   // no such time
//     rate.AddSample(ZT_PLUGIN::UtcString(time, 3, true), 61);                 // 2026-06-01T06:30:05.250Z
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace ZT_PLUGIN {

// From 0000-01-01T00:00:00Z to the end of the year 9999.
struct IsoTime {
    std::int64_t seconds = 0;  // since 1970-01-01T00:00:00Z, without leap seconds
    std::string decimals;      // of the second, all that the text has; they count upwards, before 1970, too
    bool hasZone = false;      // false: the text has neither "Z" nor an offset, and was taken for UTC
};

namespace iso_time_private {

struct Date {
    std::int64_t year;
    std::int64_t month;  // from 1
    std::int64_t day;    // from 1
};

constexpr std::int64_t kSecondsOfDay = 86400;
constexpr std::int64_t kFirstDay = -719528;  // 0000-01-01
constexpr std::int64_t kLastDay = 2932896;   // 9999-12-31

inline std::int64_t DaysOfMonth(std::int64_t year, std::int64_t month) {
    if (month == 2) return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0) ? 29 : 28;
    return month == 4 || month == 6 || month == 9 || month == 11 ? 30 : 31;
}

// Days before a year that begins in March, since 0000-03-01: so the leap day is the last of its year.
inline std::int64_t DaysBefore(std::int64_t marchYear) {
    return marchYear * 365 + marchYear / 4 - marchYear / 100 + marchYear / 400;
}

// Since 1970. Years are shifted by a whole cycle of leap years, so that none is negative.
inline std::int64_t DaysOf(const Date& date) {
    constexpr std::int64_t kShift = 400, kDaysOfShift = 146097, kDaysTo1970 = 719468;
    const std::int64_t year = date.year + kShift - (date.month <= 2 ? 1 : 0);
    const std::int64_t month = (date.month + 9) % 12;
    return DaysBefore(year) + (153 * month + 2) / 5 + date.day - 1 - kDaysOfShift - kDaysTo1970;
}

inline Date DateOf(std::int64_t days) {
    Date date{0, 1, 1};
    // A first guess is never too late, and at most one year too early.
    date.year = (days - kFirstDay) * 400 / 146097;
    if (date.year > 0 && DaysOf(date) > days) --date.year;
    while (DaysOf({date.year + 1, 1, 1}) <= days) ++date.year;
    while (date.month < 12 && DaysOf({date.year, date.month + 1, 1}) <= days) ++date.month;
    date.day = days - DaysOf(date) + 1;
    return date;
}

}  // namespace iso_time_private

// The days from 1970-01-01 to a day of the Gregorian calendar, in the years 0 to 9999; months and days count from 1.
// False, with `days` as it was, when there is no such day.
inline bool DayNumber(std::int64_t year, std::int64_t month, std::int64_t day, std::int64_t& days) {
    using namespace iso_time_private;
    if (year < 0 || year > 9999 || month < 1 || month > 12 || day < 1 || day > DaysOfMonth(year, month)) return false;
    days = DaysOf({year, month, day});
    return true;
}

namespace iso_time_private {

// Reads a text from its beginning.
class Scanner {
public:
    explicit Scanner(const std::string& text) : text_(text) {}

    bool IsAtEnd() const { return at_ == text_.size(); }
    bool IsAtDigit() const { return !IsAtEnd() && text_[at_] >= '0' && text_[at_] <= '9'; }

    bool Skip(char c) {
        if (IsAtEnd() || text_[at_] != c) return false;
        ++at_;
        return true;
    }
    // A number of exactly so many digits.
    bool Take(int digits, std::int64_t& number) {
        number = 0;
        for (; digits > 0; --digits, ++at_) {
            if (!IsAtDigit()) return false;
            number = number * 10 + (text_[at_] - '0');
        }
        return true;
    }
    std::string TakeDigits() {
        const std::size_t begin = at_;
        while (IsAtDigit()) ++at_;
        return text_.substr(begin, at_ - begin);
    }

private:
    const std::string& text_;
    std::size_t at_ = 0;
};

// yyyy-mm-dd or yyyymmdd
inline bool TakeDate(Scanner& text, std::int64_t& days) {
    Date date{0, 0, 0};
    if (!text.Take(4, date.year)) return false;
    const bool hasHyphens = text.Skip('-');
    if (!text.Take(2, date.month) || text.Skip('-') != hasHyphens || !text.Take(2, date.day)) return false;
    return DayNumber(date.year, date.month, date.day, days);
}

// hh, hh:mm, hh:mm:ss with decimals after a point or a comma, or the same without colons
inline bool TakeTimeOfDay(Scanner& text, std::int64_t& seconds, std::string& decimals) {
    std::int64_t hour = 0, minute = 0, second = 0;
    if (!text.Take(2, hour)) return false;
    const bool hasColons = text.Skip(':');
    if (hasColons || text.IsAtDigit()) {
        if (!text.Take(2, minute)) return false;
        const bool hasSeconds = hasColons ? text.Skip(':') : text.IsAtDigit();
        if (hasSeconds && !text.Take(2, second)) return false;
        if (hasSeconds && (text.Skip('.') || text.Skip(','))) {
            decimals = text.TakeDigits();
            if (decimals.empty()) return false;
        }
    }
    seconds = (hour * 60 + minute) * 60 + second;
    if (hour == 24) return seconds == kSecondsOfDay && decimals.find_first_not_of('0') == std::string::npos;
    return hour < 24 && minute < 60 && second <= 60;
}

// "Z", +hh, +hhmm or +hh:mm, as seconds east of Greenwich; nothing is the end of the text
inline bool TakeZone(Scanner& text, std::int64_t& offset, bool& hasZone) {
    offset = 0;
    hasZone = !text.IsAtEnd();
    if (!hasZone || text.Skip('Z') || text.Skip('z')) return text.IsAtEnd();
    const bool isWest = text.Skip('-');
    std::int64_t hours = 0, minutes = 0;
    if ((!isWest && !text.Skip('+')) || !text.Take(2, hours)) return false;
    if ((text.Skip(':') || text.IsAtDigit()) && !text.Take(2, minutes)) return false;
    offset = (hours * 60 + minutes) * (isWest ? -60 : 60);
    return hours < 24 && minutes < 60 && text.IsAtEnd();
}

inline void Append(std::string& text, std::int64_t number, int digits) {
    const std::string plain = std::to_string(number);
    text.append(static_cast<std::size_t>(digits) - plain.size(), '0') += plain;
}

}  // namespace iso_time_private

// Reads a calendar date, "T" (or "t", or a blank) and a time of day, and where that was: 2026-06-01T08:30:05.25+02:00,
// 20260601T063005Z, 2026-06-01 06:30, 2026-06-01. Without a time of day it is midnight, without a zone UTC; a second of
// 60 is the first of the next minute, 24:00 the next midnight. False, with `time` as it was, for any other text: days
// that there are not, weeks, days of the year, decimals of minutes, blanks around it, or a time outside of the years
// 0000 to 9999.
inline bool ParseIsoTime(const std::string& text, IsoTime& time) {
    using namespace iso_time_private;
    Scanner scanner(text);
    IsoTime read;
    std::int64_t days = 0, seconds = 0, offset = 0;
    if (!TakeDate(scanner, days)) return false;
    if (!scanner.IsAtEnd()) {
        if (!scanner.Skip('T') && !scanner.Skip('t') && !scanner.Skip(' ')) return false;
        if (!TakeTimeOfDay(scanner, seconds, read.decimals) || !TakeZone(scanner, offset, read.hasZone)) return false;
    }
    read.seconds = days * kSecondsOfDay + seconds - offset;
    if (read.seconds < kFirstDay * kSecondsOfDay || read.seconds >= (kLastDay + 1) * kSecondsOfDay) return false;
    time = read;
    return true;
}

// The time string of a document whose root has SetUtc(precision, isGmt). Decimals that the form does not have are cut
// off, missing ones are zeros. `time` is one that ParseIsoTime gave, or within its years.
inline std::string UtcString(const IsoTime& time, std::uint32_t precision, bool isGmt) {
    using namespace iso_time_private;
    const std::int64_t sinceFirst = time.seconds - kFirstDay * kSecondsOfDay;
    const Date date = DateOf(sinceFirst / kSecondsOfDay + kFirstDay);
    const std::int64_t ofDay = sinceFirst % kSecondsOfDay;
    std::string text;
    Append(text, date.year, 4);
    Append(text += '-', date.month, 2);
    Append(text += '-', date.day, 2);
    Append(text += 'T', ofDay / 3600, 2);
    Append(text += ':', ofDay / 60 % 60, 2);
    Append(text += ':', ofDay % 60, 2);
    if (precision != 0) {
        std::string decimals = time.decimals;
        decimals.resize(precision, '0');
        text += '.' + decimals;
    }
    return text + (isGmt ? "Z" : "+00:00");
}

}  // namespace ZT_PLUGIN
