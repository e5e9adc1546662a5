// Where the times of rows are read, and how.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "options.h"
#include "time_cell.h"
#include "units.h"

namespace series {

struct TimeReading {
    enum class Kind : std::uint8_t { kNumber, kCalendar, kTimeOfDay, kDateAndTime, kRate };

    static constexpr std::size_t kNoColumn = static_cast<std::size_t>(-1);

    Kind kind = Kind::kNumber;
    std::size_t column = kNoColumn;
    std::size_t second = kNoColumn;  // of the times of day beside dates
    TimeUnit unit{0, 1};             // of numbers
    DateOrder order = DateOrder::kDayFirst;
    Rate rate{1, 1};

    bool Uses(std::size_t index) const { return index == column || index == second; }
};

// Times of day go on behind midnight when they fall by more than half a day.
class TimeReader {
public:
    TimeReader(const TimeReading& reading, Decimal decimal) : reading_(reading), decimal_(decimal) {}

    // Of the next row. `first` and `second`: the cells of the two columns, as far as the reading has them.
    TimeState Next(std::string_view first, std::string_view second, Moment& moment);

    // How often times of day have passed midnight.
    std::uint64_t Midnights() const { return midnights_; }

private:
    TimeState NextOfRate(Moment& moment);

    TimeReading reading_;
    Decimal decimal_;
    std::uint64_t row_ = 0;
    std::uint64_t midnights_ = 0;
    std::int64_t lastOfDay_ = -1;
};

}  // namespace series
