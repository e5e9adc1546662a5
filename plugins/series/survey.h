// What has to be known of a whole table before its document can be begun.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "body.h"

namespace series {

struct ColumnFacts {
    std::uint64_t numbers = 0;
    std::uint64_t texts = 0;
    bool arePlain = true;  // all numbers are as the library wants them
    RowCount markers;      // cells that say that there is no value

    bool IsNumber() const { return texts == 0 && (numbers != 0 || markers.count == 0); }
};

struct Survey {
    TimeReading reading;
    std::vector<ColumnFacts> columns;
    std::uint64_t rows = 0;
    std::uint32_t decimals = 0;  // of a second, the fewest that hold every time
    LeftOut leftOut;
    std::uint64_t midnights = 0;
};

// Reads the whole table: once, or with two readings once for each, to find the one that fits. Throws Refusal when both
// fit equally well, and when no row has a time.
Survey TakeSurvey(const std::string& path, const Dialect& dialect, const Header& header,
                  const std::vector<TimeReading>& readings);

}  // namespace series
