// The beginning of a table, on which its dialect is judged.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "table_source.h"

namespace series {

struct Head {
    Encoding encoding = Encoding::kUtf8;
    std::string text;             // UTF-8
    bool isWhole = false;         // the whole table
    std::int64_t firstByte = -1;  // of the text in the file; -1 for one that was decoded
};

// At least 256 KiB, and so much more that a few rows are there, up to the length of a row.
Head ReadHead(const std::string& path, std::optional<Encoding> encoding);

struct HeadCell {
    std::string text;
    bool isQuoted;
};

struct HeadRow {
    std::vector<HeadCell> cells;
    std::string text;  // as it stands
    std::int64_t line;
    std::int64_t offset;
    bool isComment;

    const std::string& At(std::size_t column) const {
        static const std::string none;
        return column < cells.size() ? cells[column].text : none;
    }
};

// Whether a row begins as comments do: with "#", "%" or "//".
bool BeginsAsComment(std::string_view row);

// The rows of the head but for one that its end has cut. Throws Refusal as RowReader does.
std::vector<HeadRow> RowsOf(const Head& head, char delimiter);

// How many of a table's rows begin as comments do: when they are most, they are no comments.
bool HasComments(const std::vector<HeadRow>& rows);

}  // namespace series
