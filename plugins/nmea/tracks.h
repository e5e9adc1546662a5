// The dynamic nodes of a log's document.
#pragma once

#include <array>
#include <cstdint>

#include <zentor/plugin/converter.h>

#include "epoch.h"
#include "log_reader.h"

namespace nmea {

class Tracks {
public:
    // Makes a node in `group` for each value that the log has.
    Tracks(ZT_PLUGIN::Conversion& conversion, ZT_PLUGIN::Group& group, const LogFacts& facts);

    void Add(const Epoch& epoch);

private:
    std::int64_t nanosecondsPerTick_ = 1;
    std::uint32_t ticksPerSecond_ = 1;
    std::array<ZT_PLUGIN::DynamicNumber, kNumberCount> numbers_;
    std::array<ZT_PLUGIN::DynamicText, kTextCount> texts_;
};

}  // namespace nmea
