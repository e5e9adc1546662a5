#include "row_reader.h"

#include <algorithm>
#include <cstring>

#include "refusal.h"

namespace series {

namespace {

constexpr std::size_t kFirstRoom = 1 << 18;

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

}  // namespace

RowReader::RowReader(TextSource& source, char delimiter)
    : source_(source),
      delimiter_(delimiter),
      isBlankDelimited_(delimiter == kBlanks),
      cellEnd_(delimiter, delimiter == kBlanks ? '\t' : delimiter),
      buffer_(kFirstRoom + CellEnd::kRoom, '\n'),
      position_(source.FirstByte()) {}

// Adds to what is left of the row; false at the end of the text.
bool RowReader::Fill() {
    std::memmove(buffer_.data(), buffer_.data() + begin_, end_ - begin_);
    position_ += static_cast<std::int64_t>(begin_);
    at_ -= begin_;
    end_ -= begin_;
    begin_ = 0;
    std::size_t room = buffer_.size() - CellEnd::kRoom;
    if (end_ == room) {
        if (end_ >= kLongestRow) {
            throw Refusal("a row is longer than 16 MiB, or a quotation mark that is opened in it is not closed", line_,
                          source_.IsAsInFile() ? position_ : -1);
        }
        room *= 2;
        buffer_.resize(room + CellEnd::kRoom);
    }
    end_ += source_.Read(buffer_.data() + end_, room - end_);
    buffer_[end_] = '\n';  // where every search stops
    return at_ != end_;
}

void RowReader::SkipEnd() {
    const bool isPair = buffer_[at_] == '\r';
    ++at_;
    if (isPair && More() && buffer_[at_] == '\n') ++at_;
    ++nextLine_;
}

bool RowReader::Next() {
    do {
        begin_ = at_;
        if (!More()) return false;
        line_ = nextLine_;
        kept_ = cells_ = count_ = 0;
        TakeRow();
    } while (count_ == 0);
    return true;
}

void RowReader::TakeRow() {
    if (isBlankDelimited_) SkipBlanks();
    while (TakePlainCells() && TakeCell()) {
    }
    length_ = at_ - begin_;
    if (at_ != end_) SkipEnd();  // which may move the row
    row_ = buffer_.data() + begin_;
    offset_ = source_.IsAsInFile() ? position_ + static_cast<std::int64_t>(begin_) : -1;
}

// Cells that have neither quotation marks nor blanks before them, and end within the buffer: nearly all. False when the
// last of them was the last of the row.
bool RowReader::TakePlainCells() {
    if (isBlankDelimited_) return true;
    const char* const row = buffer_.data() + begin_;
    const char* const end = buffer_.data() + end_;
    const char* at = buffer_.data() + at_;
    bool goesOn = true;
    while (goesOn && at != end && *at != '"' && !IsBlank(*at) && kept_ != spans_.size()) {
        const char* const cellEnd = cellEnd_.Find(at);
        if (cellEnd == end) break;
        spans_[kept_++] = {static_cast<std::uint32_t>(at - row), static_cast<std::uint32_t>(cellEnd - row), false};
        ++cells_;
        if (cellEnd != at) count_ = cells_;
        goesOn = *cellEnd != '\n' && *cellEnd != '\r';
        at = goesOn ? cellEnd + 1 : cellEnd;
    }
    at_ = static_cast<std::size_t>(at - buffer_.data());
    return goesOn;
}

// False when it was the last of the row.
bool RowReader::TakeCell() {
    if (!More()) return false;
    if ((buffer_[at_] == '"' || IsBlank(buffer_[at_])) && TakeQuotedCell()) return GoOn();
    const std::size_t begin = at_ - begin_;
    do {
        at_ = static_cast<std::size_t>(cellEnd_.Find(buffer_.data() + at_) - buffer_.data());
    } while (at_ == end_ && Fill());
    AddCell(begin, at_ - begin_, false);
    return GoOn();
}

// Over the delimiter behind a cell; false at the end of the row.
bool RowReader::GoOn() {
    if (isBlankDelimited_) return SkipBlanks() && !IsAtEnd();
    if (at_ == end_ || IsAtEnd()) return false;
    ++at_;
    return true;
}

// A cell with a quotation mark at its beginning, perhaps behind blanks; false for any other.
bool RowReader::TakeQuotedCell() {
    const std::size_t begin = at_ - begin_;
    const bool isQuoted = SkipBlanks() && buffer_[at_] == '"';
    if (isQuoted) {
        TakeQuoted();
    } else {
        at_ = begin_ + begin;
    }
    return isQuoted;
}

// From its quotation mark to the delimiter or the end of the row. The text moves over the marks.
void RowReader::TakeQuoted() {
    const std::int64_t line = nextLine_;
    ++at_;
    const std::size_t begin = at_ - begin_;
    std::size_t out = begin;
    const auto put = [&](char c) { buffer_[begin_ + out++] = c; };
    for (;;) {
        if (!More()) {
            throw UnclosedQuote(line,
                                source_.IsAsInFile() ? position_ + static_cast<std::int64_t>(begin_ + begin) - 1 : -1);
        }
        const char c = buffer_[at_++];
        if (c == '"') {
            if (!More() || buffer_[at_] != '"') break;
            ++at_;
        } else if (c == '\n' || (c == '\r' && !(More() && buffer_[at_] == '\n'))) {
            ++nextLine_;
        }
        put(c);
    }
    std::size_t end = out;
    while (More() && !IsAtEnd() && !IsAtDelimiter()) {  // what stands behind the closing mark
        const char c = buffer_[at_++];
        put(c);
        if (!IsBlank(c)) end = out;
    }
    AddCell(begin, end, true);
}

void RowReader::AddCell(std::size_t begin, std::size_t end, bool isQuoted) {
    const char* const text = buffer_.data() + begin_;
    const bool mayBeEmpty = !isQuoted && begin != end && IsBlank(text[begin]);
    if (mayBeEmpty && std::all_of(text + begin, text + end, IsBlank)) end = begin;
    ++cells_;
    if (begin != end) count_ = cells_;
    if (kept_ == kMostCells) return;
    if (kept_ == spans_.size()) spans_.emplace_back();
    spans_[kept_++] = {static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(end), isQuoted};
}

// False at the end of the text.
bool RowReader::SkipBlanks() {
    while (More()) {
        if (!IsBlank(buffer_[at_]) || (!isBlankDelimited_ && IsAtDelimiter())) return true;
        ++at_;
    }
    return false;
}

}  // namespace series
