// What the host says of a table: the converter's parameters.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include <zentor/plugin/converter.h>

#include "number_cell.h"
#include "table_source.h"
#include "time_cell.h"

namespace series {

// Rows per second.
struct Rate {
    std::int64_t rows;
    std::int64_t seconds;
};

struct Options {
    std::optional<std::string> time;  // the name or the index of the column of times
    std::optional<Rate> rate;         // in place of one
    std::optional<char> delimiter;
    std::optional<Decimal> decimal;
    std::optional<std::int64_t> headerLine;  // from 1 on; 0: there is no header
    std::optional<Encoding> encoding;
    std::optional<DateOrder> dates;
};

// Throws Refusal for what a parameter cannot be.
Options ReadOptions(const ZT_PLUGIN::Conversion& conversion);

}  // namespace series
