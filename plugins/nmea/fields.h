// The fields of sentences. Each reader gives false for a field that is wrong; an empty field is no value, not a fault.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace nmea {

// A time of day.
struct TimeOfDay {
    std::int64_t nanoseconds;  // since midnight; that of a leap second is that of the following midnight
    std::uint32_t decimals;    // of the second, as they were written, at most 9
};

// "hhmmss" or "hhmmss.s...". Decimals after the ninth are cut off.
bool ReadTime(std::string_view field, std::optional<TimeOfDay>& time);

// "ddmmyy", years 80 to 99 in the 20th century, others in the 21st; as days since 1970-01-01.
bool ReadDate(std::string_view field, std::optional<std::int64_t>& day);

// The same from three fields: day, month, and the year from 1980 to 2199.
bool ReadDate(std::string_view day, std::string_view month, std::string_view year, std::optional<std::int64_t>& date);

// A finite decimal number from `minimum` to `maximum`.
bool ReadNumber(std::string_view field, double minimum, double maximum, std::optional<double>& number);

// "ddmm.mmm" or "dddmm.mmm" and its hemisphere, as degrees, negative for `negative` ("S" or "W"), positive for
// `positive`. A minute's n-th decimal is kept as the (n + 4)-th of a degree, which tells all minutes apart; decimals
// after the ninth are cut off.
bool ReadAngle(std::string_view field, std::string_view hemisphere, char positive, char negative, int maxDegrees,
               std::optional<double>& degrees);

}  // namespace nmea
