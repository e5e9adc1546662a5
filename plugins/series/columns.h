// The dynamic nodes of a table's document.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <zentor/plugin/converter.h>

#include "header.h"
#include "survey.h"

namespace series {

class Columns {
public:
    // Makes a node in the root for each column but those of the times. All outlive it.
    Columns(ZT_PLUGIN::Conversion& conversion, ZT_PLUGIN::Root& root, const Dialect& dialect, const Header& header,
            const Survey& survey);

    // Adds a row's cells.
    void Add(const Moment& time, const RowReader& row);

    // Texts with bytes that are no UTF-8, which were read as Windows-1252.
    const RowCount& NotUtf8() const { return notUtf8_; }

private:
    struct Column {
        ZT_PLUGIN::DynamicNumber number;
        ZT_PLUGIN::DynamicText text;
        bool isPlain = false;  // its cells go into the document as they are
    };

    void AddText(Column& column, ZT_PLUGIN::Ticks time, const Cell& cell, const RowReader& row);

    const Dialect& dialect_;
    std::vector<Column> columns_;
    std::int64_t ticksPerSecond_ = 1;
    std::int64_t nanosecondsPerTick_ = 1'000'000'000;
    std::string room_;
    RowCount notUtf8_;
};

}  // namespace series
