// What single sentences say.
#pragma once

#include <cstdint>
#include <optional>

#include "epoch.h"
#include "fields.h"
#include "sentence.h"

namespace nmea {

struct Reading {
    bool isTimed = false;  // whether sentences of this kind have a time of their own
    std::optional<TimeOfDay> time;
    std::optional<std::int64_t> day;  // since 1970-01-01
    Epoch values;                     // without its time
};

enum class ReadingState : std::uint8_t { kRead, kOfNoUse, kDamaged };

// Reads RMC, GGA, GSA, VTG and ZDA; other kinds are of no use. A sentence with a wrong field is damaged as a whole.
// Position, altitude, speed and course that the receiver itself says are not to be used are left out.
ReadingState ReadSentence(const Sentence& sentence, Reading& reading);

}  // namespace nmea
