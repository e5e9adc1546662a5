// Rows of a table and their cells, through one buffer, whatever the table's length.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "cell_end.h"
#include "table_source.h"

namespace series {

// Between cells. As a blank: any run of blanks and tabs.
constexpr char kBlanks = ' ';

struct Cell {
    std::string_view text;  // without its quotation marks, doubled ones single; lives until the next row
    bool isQuoted;
};

class RowReader {
public:
    static constexpr std::size_t kMostCells = 65536;
    static constexpr std::size_t kLongestRow = 1 << 24;  // bytes

    // The source outlives the reader.
    RowReader(TextSource& source, char delimiter);

    // Goes to the next row that is not empty; false at the end. Rows end with LF, CR LF or CR. A cell that begins with
    // a quotation mark, blanks before it aside, goes on to the next single one, over lines. Throws Refusal for a row
    // longer than kLongestRow and for a quotation mark that is never closed.
    bool Next();

    // Beyond kMostCells cells are counted, but not kept. Empty ones at the end of a row do not count.
    std::size_t Count() const { return count_; }
    Cell At(std::size_t index) const {
        if (index >= kept_) return {{}, false};
        const Span& span = spans_[index];
        return {{row_ + span.begin, span.end - span.begin}, span.isQuoted};
    }
    // The row as it stands in the table, but for quotation marks.
    std::string_view Text() const { return {row_, length_}; }
    std::int64_t Line() const { return line_; }  // of its beginning, from 1 on
    // Of its first byte in the file, -1 when the file had to be decoded.
    std::int64_t Offset() const { return offset_; }

private:
    struct Span {
        std::uint32_t begin;
        std::uint32_t end;
        bool isQuoted;
    };

    bool Fill();
    bool More() { return at_ != end_ || Fill(); }
    void TakeRow();
    bool TakePlainCells();
    bool TakeCell();
    bool TakeQuotedCell();
    bool GoOn();
    void TakeQuoted();
    bool IsAtEnd() const { return buffer_[at_] == '\n' || buffer_[at_] == '\r'; }
    bool IsAtDelimiter() const { return buffer_[at_] == delimiter_ || (isBlankDelimited_ && buffer_[at_] == '\t'); }
    void AddCell(std::size_t begin, std::size_t end, bool isQuoted);
    bool SkipBlanks();
    void SkipEnd();

    TextSource& source_;
    const char delimiter_;
    const bool isBlankDelimited_;
    const CellEnd cellEnd_;
    std::vector<char> buffer_;  // with CellEnd::kRoom bytes more than are read into it
    std::size_t begin_ = 0;     // of the row, in the buffer
    std::size_t at_ = 0;
    std::size_t end_ = 0;    // of what has been read
    std::int64_t position_;  // of begin_, in the file
    std::int64_t nextLine_ = 1;
    std::vector<Span> spans_;
    std::size_t kept_ = 0;
    std::size_t cells_ = 0;
    std::size_t count_ = 0;
    const char* row_ = nullptr;
    std::size_t length_ = 0;
    std::int64_t line_ = 0;
    std::int64_t offset_ = 0;
};

}  // namespace series
