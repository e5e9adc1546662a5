#include "conversion/csv_tsv/table_dialect.h"

#include <algorithm>
#include <vector>

#include "util/path_text.h"

namespace zentor {

namespace {

using Cells = std::vector<std::string_view>;

Cells CellsOf(std::string_view line, char delimiter) {
    Cells cells;
    for (;;) {
        const std::size_t end = std::min(line.find(delimiter), line.size());
        cells.push_back(line.substr(0, end));
        if (end == line.size()) return cells;
        line.remove_prefix(end + 1);
    }
}

bool IsNumber(std::string_view cell) {
    return !cell.empty() && ReadNumericCell(cell, 0, '\0', NumberForm::kShortest).end == cell.size();
}

// 1,5 where it is one cell.
bool IsDecimalComma(std::string_view cell) {
    std::string number(cell.substr(0, 64));
    const std::size_t comma = number.find(',');
    if (comma == std::string::npos || comma + 1 == number.size() || cell.size() > number.size()) return false;
    number[comma] = '.';
    return IsNumber(number);
}

bool IsQuoted(std::string_view cell) {
    const std::size_t begin = cell.find_first_not_of(' ');
    return begin != std::string_view::npos && cell[begin] == '"';
}

// The lines that can be looked at, the header included; empty ones are none.
std::vector<std::string_view> HeadOf(const TableIndex& table) {
    constexpr std::size_t kMostLines = 20;
    constexpr std::size_t kMostBytes = 0x10000;
    std::vector<std::string_view> lines;
    std::string_view rest = table.text.substr(0, kMostBytes);
    while (!rest.empty() && lines.size() < kMostLines) {
        const std::size_t end = std::min(rest.find_first_of("\r\n"), rest.size());
        if (end != 0) lines.push_back(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return lines;
}

bool LooksLikeAnotherFormat(std::string_view text) {
    const std::size_t begin = std::min(text.find_first_not_of(" \t\r\n"), text.size());
    text.remove_prefix(begin);
    if (LowerCaseAscii(std::string(text.substr(0, 9))) == "hierarchy") return true;
    const bool isSentence = text.size() > 6 && (text[0] == '$' || text[0] == '!') && text[6] == ',';
    return isSentence || text.starts_with("{\"") || text.starts_with("[{") || text.starts_with("[[");
}

class Dialect {
public:
    Dialect(const TableIndex& table, const LossWatch& watch) : table_(table), watch_(watch), lines_(HeadOf(table)) {}

    void Tell() {
        if (lines_.empty()) return;
        if (LooksLikeAnotherFormat(table_.text)) {
            Add(ZT_NOTICE_OTHER_FORMAT, lines_.front(), 1);
            return;
        }
        if (!TellDelimiter()) TellNames();
        TellCells();
    }

private:
    void Add(ZT_NoticeKind kind, std::string_view where, std::uint64_t count) const {
        AddNotice(kind, watch_.PlaceAt(static_cast<std::size_t>(where.data() - table_.text.data())), count);
    }

    // Another character stands equally often in all lines, and the one that cells are cut at nowhere, or not equally.
    bool TellDelimiter() const {
        if (lines_.size() < 2 || IsEven(table_.delimiter)) return false;
        for (const char other : {';', '\t', ',', '|'}) {
            if (other == table_.delimiter || !IsEven(other)) continue;
            Add(ZT_NOTICE_DELIMITER, lines_.front(), 1);
            return true;
        }
        return false;
    }
    bool IsEven(char delimiter) const {
        const auto count = [delimiter](std::string_view line) {
            return std::count(line.begin(), line.end(), delimiter);
        };
        const auto first = count(lines_.front());
        // The last line may have been cut.
        return first != 0 && std::all_of(lines_.begin(), lines_.end() - (lines_.size() > 2 ? 1 : 0),
                                         [&](std::string_view line) { return count(line) == first; });
    }

    void TellNames() const {
        const Cells names = CellsOf(lines_.front(), table_.delimiter);
        if (std::all_of(names.begin(), names.end(),
                        [](std::string_view name) { return name.empty() || IsNumber(name); })) {
            Add(ZT_NOTICE_DATA_AS_NAMES, lines_.front(), 1);
        }
        if (lines_.size() < 3) return;
        // Most lines have more cells than the first, and equally many.
        const std::size_t usual = CellsOf(lines_[lines_.size() / 2], table_.delimiter).size();
        const auto alike = std::count_if(lines_.begin(), lines_.end(), [&](std::string_view line) {
            return CellsOf(line, table_.delimiter).size() == usual;
        });
        if (names.size() == 1 && usual > 1 && static_cast<std::size_t>(alike) * 2 >= lines_.size()) {
            Add(ZT_NOTICE_TITLE_LINES, lines_.front(), 1);
        }
    }

    void TellCells() const {
        for (const std::string_view line : lines_) {
            for (const std::string_view cell : CellsOf(line, table_.delimiter)) {
                if (IsQuoted(cell)) Add(ZT_NOTICE_QUOTES, cell, 1);
                if (IsDecimalComma(cell)) Add(ZT_NOTICE_DECIMAL_COMMAS, cell, 1);
            }
            if (table_.delimiter != ',' || line.find(';') == std::string_view::npos) continue;
            for (const std::string_view cell : CellsOf(line, ';')) {
                if (IsDecimalComma(cell)) Add(ZT_NOTICE_DECIMAL_COMMAS, cell, 1);
            }
        }
    }

    const TableIndex& table_;
    const LossWatch& watch_;
    std::vector<std::string_view> lines_;
};

}  // namespace

void TellDialect(const TableIndex& table, const LossWatch& watch) {
    if (AreNoticesWanted()) Dialect(table, watch).Tell();
}

}  // namespace zentor
