// Dates and times of day as texts: yyyy-mm-ddThh:mm:ss, a point and decimals of the second if there are any, and "Z" or
// an offset such as +01:30.
#pragma once

#include <cstdint>
#include <string_view>

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

}  // namespace zentor
