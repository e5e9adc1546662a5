// The lines before a table's rows: names, units, titles.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "dialect.h"

namespace series {

struct Header {
    bool isThere = false;
    std::vector<std::string> names;  // one for each column; empty where there is none
    std::vector<std::string> units;  // of a line of units; empty when there is none
    std::string title;               // the other lines
    std::int64_t firstRowLine = 1;   // of the first row that is neither

    // The name of a column, or "column" and its index.
    std::string NameOf(std::size_t column) const;
    std::string UnitOf(std::size_t column) const { return column < units.size() ? units[column] : std::string(); }
};

// Rows are like the later ones: numbers and times stand in the same columns. What comes before them are names, units
// and titles. Throws Refusal for a header line that is not there, and for more columns than RowReader keeps.
Header FindHeader(const Dialect& dialect, std::optional<std::int64_t> headerLine);

}  // namespace series
