#include "time_column.h"

namespace series {

namespace {

constexpr std::int64_t kSecondsOfDay = 86400;
constexpr std::int64_t kNanoseconds = 1'000'000'000;

TimeState ReadScaled(std::string_view cell, Decimal decimal, const TimeUnit& unit, Moment& moment) {
    const TimeState state = ReadNumberTime(cell, decimal, unit.decimals, moment);
    if (unit.factor == 1 || state == TimeState::kNone) return state;
    const std::int64_t nanoseconds = std::int64_t{moment.nanoseconds} * unit.factor;
    moment.seconds = moment.seconds * unit.factor + nanoseconds / kNanoseconds;
    moment.nanoseconds = static_cast<std::int32_t>(nanoseconds % kNanoseconds);
    return IsInYears(moment.seconds) ? state : TimeState::kNone;
}

}  // namespace

// Row times seconds / rows, cut off at nanoseconds, without a product that a 64-bit number cannot hold.
TimeState TimeReader::NextOfRate(Moment& moment) {
    const auto rows = static_cast<std::uint64_t>(reading_.rate.rows);
    const auto seconds = static_cast<std::uint64_t>(reading_.rate.seconds);
    const std::uint64_t row = row_++;
    const std::uint64_t periods = row / rows;   // of `seconds` each
    std::uint64_t rest = row % rows * seconds;  // in parts of 1 / rows seconds; below 10^18
    moment.seconds = static_cast<std::int64_t>(periods * seconds + rest / rows);
    rest %= rows;
    moment.nanoseconds = static_cast<std::int32_t>(rest * static_cast<std::uint64_t>(kNanoseconds) / rows);
    return TimeState::kRead;
}

TimeState TimeReader::Next(std::string_view first, std::string_view second, Moment& moment) {
    CalendarTime date;
    switch (reading_.kind) {
        case TimeReading::Kind::kRate:
            return NextOfRate(moment);
        case TimeReading::Kind::kNumber:
            return ReadScaled(first, decimal_, reading_.unit, moment);
        case TimeReading::Kind::kCalendar: {
            const TimeState state = ReadCalendarTime(first, reading_.order, date);
            moment = date.moment;
            return state;
        }
        case TimeReading::Kind::kDateAndTime: {
            const TimeState state = ReadTimeOfDay(second, moment);
            if (state == TimeState::kNone || moment.seconds > kSecondsOfDay || date.hasTimeOfDay ||
                ReadCalendarTime(first, reading_.order, date) != TimeState::kRead) {
                return TimeState::kNone;
            }
            moment.seconds += date.moment.seconds;
            return state;
        }
        case TimeReading::Kind::kTimeOfDay: {
            const TimeState state = ReadTimeOfDay(first, moment);
            if (state == TimeState::kNone) return state;
            const bool isPastMidnight = moment.seconds < lastOfDay_ - kSecondsOfDay / 2 && lastOfDay_ < kSecondsOfDay;
            if (isPastMidnight) ++midnights_;
            lastOfDay_ = moment.seconds;
            moment.seconds += static_cast<std::int64_t>(midnights_) * kSecondsOfDay;
            return state;
        }
    }
    return TimeState::kNone;
}

}  // namespace series
