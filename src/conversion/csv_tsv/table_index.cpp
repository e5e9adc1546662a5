#include "conversion/csv_tsv/table_index.h"

#include <algorithm>
#include <limits>

#include "errors/progress.h"

namespace zentor {

namespace {

constexpr std::size_t kNone = std::string_view::npos;

bool IsLineEnd(char c) { return c == '\n' || c == '\r'; }

// The white space that a decimal conversion skips and that does not end a line.
bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\v' || c == '\f'; }

// Where the line after the one that ends at `end` begins.
std::size_t StartOfNextLine(std::string_view text, std::size_t end) {
    if (end == text.size()) return end;
    const bool isLineFeed = text[end] == '\n';
    ++end;
    if (isLineFeed && end < text.size() && text[end] == '\r') ++end;
    return end;
}

std::size_t EndOfLine(std::string_view text, std::size_t from) {
    return static_cast<std::size_t>(
        std::find_if(text.begin() + static_cast<std::ptrdiff_t>(from), text.end(), IsLineEnd) - text.begin());
}

// Guesses the number of rows from the beginning of the text: a little more than it has if its rows are alike.
std::size_t ExpectedRows(std::string_view text) {
    const std::string_view start = text.substr(0, 0x10000);
    if (start.empty()) return 0;
    const auto lineEnds =
        std::max(std::count(start.begin(), start.end(), '\n'), std::count(start.begin(), start.end(), '\r'));
    const double rowsPerByte = static_cast<double>(lineEnds + 1) / static_cast<double>(start.size());
    return static_cast<std::size_t>(1.05 * rowsPerByte * static_cast<double>(text.size()));
}

std::size_t CountCells(std::string_view line, char delimiter) {
    if (line.empty()) return 0;
    return static_cast<std::size_t>(std::count(line.begin(), line.end(), delimiter)) + 1;
}

// Where a cell ends that holds nothing but a plain decimal number: digits with an optional sign and point, so few that
// it is in range whatever they are. kNone for any other cell, which has to be read to be judged.
std::size_t EndOfPlainNumber(std::string_view text, std::size_t from, char delimiter) {
    constexpr std::size_t kMostCharacters = 300;
    std::size_t at = from;
    if (at < text.size() && text[at] == '-') ++at;
    const std::size_t digits = at;
    while (at < text.size() && IsDigit(text[at])) ++at;
    if (at == digits) return kNone;
    if (at < text.size() && text[at] == '.') ++at;
    while (at < text.size() && IsDigit(text[at])) ++at;
    const bool isWholeCell = at == text.size() || text[at] == delimiter || IsLineEnd(text[at]);
    return isWholeCell && at - from <= kMostCharacters ? at : kNone;
}

// Checks the cells of one row and clears the marks of columns that hold text; returns where the line ends.
std::size_t ScanRow(TableIndex& table, std::size_t from) {
    std::size_t at = from;
    bool isLong = false;
    for (std::size_t column = 0;; ++column) {
        std::size_t end = kNone;
        if (column < table.columnCount && table.isNumericColumn[column]) {
            end = EndOfPlainNumber(table.text, at, table.delimiter);
            if (end == kNone) end = ReadNumericCell(table.text, at, table.delimiter, table.form).end;
        }
        if (end == kNone) {
            end = EndOfCell(table.text, at, table.delimiter);
            if (end != at && column < table.columnCount) table.isNumericColumn[column] = false;
            isLong = isLong || (end != at && column >= table.columnCount);
        }
        if (end == table.text.size() || table.text[end] != table.delimiter) {
            if (isLong && table.longRows++ == 0) table.firstLongRow = from;
            if (column + 1 < table.columnCount && table.shortRows++ == 0) table.firstShortRow = from;
            return end;
        }
        at = end + 1;
    }
}

// The rows that begin before `limit`, from the beginning of a line on; returns where the next line begins.
std::size_t ScanRows(TableIndex& table, std::size_t from, std::size_t limit) {
    const std::string_view text = table.text;
    std::size_t at = from;
    while (at < limit) {
        std::size_t end = at;
        if (!IsLineEnd(text[at])) {
            table.rows.Add(at);
            end = ScanRow(table, at);
        }
        at = StartOfNextLine(text, end);
    }
    return at;
}

}  // namespace

RowPositions::RowPositions(std::size_t rows, std::size_t textSize)
    : isWide_(textSize > std::numeric_limits<std::uint32_t>::max()) {
    try {
        if (isWide_) {
            wide_.reserve(rows);
        } else {
            narrow_.reserve(rows);
        }
    } catch (...) {
        // The number is a guess: rows that never come need no room.
    }
}

void RowPositions::Add(std::size_t position) {
    if (isWide_) {
        wide_.push_back(position);
    } else {
        narrow_.push_back(static_cast<std::uint32_t>(position));
    }
}

void RowPositions::Set(std::size_t row, std::size_t position) {
    if (isWide_) {
        wide_[row] = position;
    } else {
        narrow_[row] = static_cast<std::uint32_t>(position);
    }
}

TableIndex::TableIndex(std::string_view tableText, char cellDelimiter, NumberForm numberForm)
    : text(tableText),
      delimiter(cellDelimiter),
      form(numberForm),
      header(tableText.substr(0, EndOfLine(tableText, 0))),
      columnCount(CountCells(header, cellDelimiter)),
      isNumericColumn(columnCount, true),
      rows(columnCount == 0 ? 0 : ExpectedRows(tableText), tableText.size()) {
    if (columnCount == 0) return;
    constexpr std::size_t kReportedAtOnce = std::size_t{1} << 20;
    BeginStep(0, kInputChecked, text.size());
    for (std::size_t at = StartOfNextLine(text, header.size()); at < text.size();) {
        at = ScanRows(*this, at, std::min(text.size() - at, kReportedAtOnce) + at);
        ReportProgress(at);
    }
}

std::size_t EndOfCell(std::string_view text, std::size_t from, char delimiter) {
    std::size_t at = from;
    while (at < text.size() && text[at] != delimiter && !IsLineEnd(text[at])) ++at;
    return at;
}

NumericCell ReadNumericCell(std::string_view text, std::size_t from, char delimiter, NumberForm form) {
    std::size_t at = from;
    while (at < text.size() && IsBlank(text[at]) && text[at] != delimiter) ++at;
    const char* const start = text.data() + at;
    const char* const textEnd = text.data() + text.size();
    NumericCell cell{kNone, start, nullptr, 0};
    const PlainDecimal plain = ScanPlainDecimal(start, textEnd, form);
    cell.canonicalEnd = plain.canonicalEnd;
    const char* stop = plain.end;
    if (stop == nullptr) {
        stop = ParseNumber(start, textEnd, cell.value);
        if (stop == nullptr || !IsWritable(cell.value, form)) return cell;
    }
    const bool isWholeCell = stop == textEnd || *stop == delimiter || IsLineEnd(*stop);
    if (isWholeCell) cell.end = static_cast<std::size_t>(stop - text.data());
    return cell;
}

}  // namespace zentor
