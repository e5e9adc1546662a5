#include "head.h"

#include <algorithm>

#include "refusal.h"
#include "row_reader.h"
#include "words.h"

namespace series {

namespace {

constexpr std::size_t kBytes = 1 << 18;
constexpr std::size_t kMostRows = 5000;
constexpr std::size_t kFewLines = 4;

// Fills a text up to a size; false at the end.
bool ReadUpTo(TextSource& source, std::size_t size, std::string& text) {
    const std::size_t before = text.size();
    text.resize(size);
    text.resize(before + source.Read(text.data() + before, size - before));
    return text.size() == size;
}

// Those that are not empty.
std::size_t CountLines(std::string_view text) {
    const auto isEnd = [](char c) { return c == '\n' || c == '\r'; };
    std::size_t lines = 0;
    for (std::size_t k = 1; k < text.size(); ++k) lines += isEnd(text[k]) && !isEnd(text[k - 1]) ? 1 : 0;
    return lines;
}

}  // namespace

Head ReadHead(const std::string& path, std::optional<Encoding> encoding) {
    Head head;
    if (encoding) {
        head.encoding = *encoding;
    } else {
        constexpr std::size_t kEnoughToTell = 1 << 16;
        FileSource raw(path, Encoding::kUtf8);
        std::string bytes;
        const bool isCut = ReadUpTo(raw, kEnoughToTell, bytes);
        head.encoding = raw.FirstByte() != 0 ? Encoding::kUtf8 : DetectEncoding(bytes, isCut);
    }
    FileSource source(path, head.encoding);
    if (source.IsAsInFile()) head.firstByte = source.FirstByte();
    for (std::size_t size = kBytes;; size *= 2) {
        if (!ReadUpTo(source, size, head.text)) {
            head.isWhole = true;
            return head;
        }
        if (CountLines(head.text) >= kFewLines || size > RowReader::kLongestRow) return head;
    }
}

bool BeginsAsComment(std::string_view row) {
    row = Trimmed(row);
    return !row.empty() && (row[0] == '#' || row[0] == '%' || row.substr(0, 2) == "//");
}

std::vector<HeadRow> RowsOf(const Head& head, char delimiter) {
    MemorySource source(head.text, head.firstByte);
    RowReader reader(source, delimiter);
    std::vector<HeadRow> rows;
    try {
        while (rows.size() < kMostRows && reader.Next()) {
            HeadRow row;
            row.cells.reserve(std::min(reader.Count(), RowReader::kMostCells));
            for (std::size_t k = 0; k < std::min(reader.Count(), RowReader::kMostCells); ++k) {
                const Cell cell = reader.At(k);
                row.cells.push_back({std::string(cell.text), cell.isQuoted});
            }
            row.text = reader.Text();
            row.line = reader.Line();
            row.offset = reader.Offset();
            row.isComment = !row.cells.front().isQuoted && BeginsAsComment(row.text);
            rows.push_back(std::move(row));
        }
    } catch (const UnclosedQuote&) {
        if (head.isWhole) throw;
        return rows;  // the row goes on beyond the head
    }
    const bool isCut = !head.isWhole && rows.size() < kMostRows && !head.text.empty() && head.text.back() != '\n';
    if (isCut && rows.size() > 1) rows.pop_back();
    return rows;
}

bool HasComments(const std::vector<HeadRow>& rows) {
    const auto comments = std::count_if(rows.begin(), rows.end(), [](const HeadRow& row) { return row.isComment; });
    return static_cast<std::size_t>(comments) * 2 <= rows.size();
}

}  // namespace series
