// Times as tables write them, exact to the nanosecond.
#pragma once

#include <cstdint>
#include <string_view>

#include "number_cell.h"

namespace series {

struct Moment {
    std::int64_t seconds = 0;      // since 1970-01-01T00:00:00Z
    std::int32_t nanoseconds = 0;  // from there on, 0 to 999,999,999
};

inline bool operator<(const Moment& left, const Moment& right) {
    return left.seconds != right.seconds ? left.seconds < right.seconds : left.nanoseconds < right.nanoseconds;
}

// From the year 0 to the end of the year 9999, which is all that documents can say.
bool IsInYears(std::int64_t seconds);

enum class TimeState : std::uint8_t {
    kRead,
    kNone,     // no such time
    kTooFine,  // with more decimals of a second than nine
};

// Day and month of dates that have the year last.
enum class DateOrder : std::uint8_t { kDayFirst, kMonthFirst };

struct CalendarTime {
    Moment moment;
    bool hasTimeOfDay = false;
    bool dependsOnOrder = false;  // its two numbers could be read either way
};

// A date with or without a time of day: 2026-06-01T08:30:05.25+02:00, 2026/6/1 8:30, 20260601T083005Z, 1.6.2026
// 8:30:05, 6/1/2026 8:30:05 PM, 1-Jun-2026, June 1, 2026. With points the day comes first, with strokes and hyphens as
// `order` says. Without a zone it is UTC.
TimeState ReadCalendarTime(std::string_view cell, DateOrder order, CalendarTime& time);

// Hours and minutes, and seconds with decimals unless there are none: 8:30, 08:30:05.25, 8:30:05 PM, and 30:05.25
// (minutes and seconds). Hours may go beyond a day where seconds follow. Counted from midnight.
TimeState ReadTimeOfDay(std::string_view cell, Moment& time);

// A number of units of 10^-`unit` seconds, from 1970 on.
TimeState ReadNumberTime(std::string_view cell, Decimal decimal, int unit, Moment& time);

// Whether a cell is a date of eight digits, or one with a time of day of 14.
bool IsCompactDate(std::string_view cell);

}  // namespace series
