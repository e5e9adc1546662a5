// Where the rows of a table begin, and which of its columns hold only numbers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "util/number_text.h"

namespace zentor {

// A position in the text for each row, in 4 bytes where the text allows it.
class RowPositions {
public:
    // For a text of `textSize` bytes in which `rows` rows are expected.
    RowPositions(std::size_t rows, std::size_t textSize);

    void Add(std::size_t position);
    std::size_t Count() const { return isWide_ ? wide_.size() : narrow_.size(); }
    std::size_t Get(std::size_t row) const { return isWide_ ? wide_[row] : narrow_[row]; }
    void Set(std::size_t row, std::size_t position);

private:
    bool isWide_;
    std::vector<std::uint32_t> narrow_;
    std::vector<std::uint64_t> wide_;
};

// Lines end with a line feed (a carriage return right after it belongs to it), with a carriage return, or with the
// text. The first line names the columns; an empty one, none. Empty lines are no rows. Cells are cut at every
// delimiter; there is no quoting, and nothing is trimmed.
struct TableIndex {
    TableIndex(std::string_view tableText, char cellDelimiter, NumberForm numberForm);

    std::string_view text;
    char delimiter;
    NumberForm form;
    std::string_view header;            // the first line
    std::size_t columnCount;            // 0 without a header
    std::vector<bool> isNumericColumn;  // every cell is empty or a number
    RowPositions rows;                  // where each row begins
    // Rows of another length than the header, and where the first of each stands. Empty cells beyond it do not count.
    std::uint64_t shortRows = 0;
    std::size_t firstShortRow = 0;
    std::uint64_t longRows = 0;
    std::size_t firstLongRow = 0;
};

// Where the cell that begins at `from` ends: at a delimiter, at the end of its line, or of the text.
std::size_t EndOfCell(std::string_view text, std::size_t from, char delimiter);

// A cell that is a number: leading blanks, then a decimal number that in this form is in the range of a double.
struct NumericCell {
    std::size_t end;           // where the cell ends; npos when it is no number
    const char* number;        // where the number begins
    const char* canonicalEnd;  // up to here it is the text that goes into the document; null: take the value
    double value;
};

NumericCell ReadNumericCell(std::string_view text, std::size_t from, char delimiter, NumberForm form);

}  // namespace zentor
