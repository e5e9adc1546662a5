// How a table is written: what stands between its cells, and before decimals.
#pragma once

#include <string>
#include <vector>

#include "head.h"
#include "number_cell.h"
#include "options.h"

namespace series {

// What a cell looks like.
enum class CellKind : std::uint8_t {
    kEmpty,
    kTyped,   // a number or a time
    kMarker,  // of a value that is not there
    kText,
};
CellKind KindOf(std::string_view cell, Decimal decimal);

struct Dialect {
    Encoding encoding = Encoding::kUtf8;
    char delimiter = ',';
    Decimal decimal = Decimal::kPoint;
    bool hasComments = true;
    std::vector<HeadRow> rows;  // of the head, without comments
    std::vector<HeadRow> comments;
};

// "comma", "blank", or the character itself
std::string NameOf(char delimiter);

// By the head, but for what the options say. Throws Refusal where two readings are equally good, naming both.
Dialect FindDialect(const Head& head, const Options& options);

}  // namespace series
