// What a receiver said of one moment.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace nmea {

enum Number : std::size_t {
    kLatitude,         // degrees, south negative
    kLongitude,        // degrees, west negative
    kAltitude,         // metres above mean sea level
    kGeoidSeparation,  // metres from the ellipsoid up to mean sea level
    kSpeed,            // knots over ground
    kCourse,           // degrees from true north
    kSatellites,       // in use
    kHdop,
    kPdop,
    kVdop,
    kNumberCount
};

enum Text : std::size_t { kFixQuality, kFixMode, kStatus, kTextCount };

struct Epoch {
    std::int64_t time = 0;  // nanoseconds since 1970-01-01T00:00:00Z
    std::array<std::optional<double>, kNumberCount> numbers;
    std::array<const char*, kTextCount> texts{};  // null: not said
};

}  // namespace nmea
