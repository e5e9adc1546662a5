// Units of measurement, as headers and unit lines have them.
#pragma once

#include <optional>
#include <string_view>

namespace series {

// Seconds in a unit of time: times 10^-decimals, times a factor.
struct TimeUnit {
    int decimals;
    int factor;
};

// "s", "msec", "microseconds" and the like.
std::optional<TimeUnit> TimeUnitOf(std::string_view word);

// Whether a cell is hardly anything else than a unit: "m/s", "[V]", "°C".
bool LooksLikeUnit(std::string_view cell);

// What stands in brackets at the end of a name; empty for none.
std::string_view BracketedUnit(std::string_view name);

// A unit without its brackets.
std::string_view WithoutBrackets(std::string_view unit);

}  // namespace series
