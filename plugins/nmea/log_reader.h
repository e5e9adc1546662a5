// A log from its first line to its last: its epochs in the order of time, and what there is to say of it as a whole.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>

#include "epoch.h"
#include "line_reader.h"
#include "readings.h"

namespace nmea {

struct LogFacts {
    bool hasChecksums = false;
    std::set<std::string, std::less<>> talkers;
    std::int64_t sentences = 0;      // that were read
    std::int64_t ofNoUse = 0;        // sound ones of other kinds
    std::int64_t damaged = 0;        // lines that are no sound sentence
    std::int64_t firstDamaged = -1;  // its offset
    std::int64_t firstDamagedLine = -1;
    std::int64_t length = 0;  // in bytes
    std::int64_t lines = 0;
    std::uint32_t decimals = 0;            // of the second, in the most precise time
    std::optional<std::int64_t> firstDay;  // since 1970-01-01; none without a date
    std::int64_t epochs = 0;
    std::int64_t epochsOutOfOrder = 0;  // left out, because they are not after the one before
    std::int64_t firstTime = 0;         // nanoseconds since 1970-01-01T00:00:00Z
    std::int64_t lastTime = 0;
    std::array<std::int64_t, kNumberCount> numbers{};  // how many epochs have which value
    std::array<std::int64_t, kTextCount> texts{};
};

// Whether a sentence of the log has a checksum, and a right one. Where one has, all must.
bool HasChecksums(const std::string& path);

// Sentences of one time are one epoch; those without a time belong to the epoch before them. Of several values of a
// kind the first counts. The date comes with RMC and ZDA; a time of day that falls by more than 12 hours is that of the
// next day, and what comes before the first date belongs to it in the same way.
class LogReader {
public:
    using OnEpoch = std::function<void(const Epoch& epoch)>;

    // `firstDay`: that of the log's first epoch. Without it the times of epochs are those of a log that begins on
    // 1970-01-01; what is said in the end is right in any case.
    LogReader(const std::string& path, bool hasChecksums, std::optional<std::int64_t> firstDay, OnEpoch onEpoch);

    LogFacts Read();

private:
    void Take(const Line& line);
    void Add(const Reading& reading);
    void EndEpoch();
    void SetDate(std::int64_t day);

    LineReader lines_;
    OnEpoch onEpoch_;
    LogFacts facts_;
    Sentence sentence_;
    Reading reading_;

    std::int64_t day_;
    std::optional<std::int64_t> lastTimeOfDay_;
    // The epoch that is being read, if any.
    std::optional<std::int64_t> timeOfDay_;
    std::optional<std::int64_t> date_;
    Epoch epoch_;
};

}  // namespace nmea
