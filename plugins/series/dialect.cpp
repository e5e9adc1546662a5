#include "dialect.h"

#include <algorithm>
#include <map>

#include "refusal.h"
#include "row_reader.h"
#include "words.h"

namespace series {

namespace {

constexpr std::size_t kJudgedRows = 200;

struct Candidate {
    char delimiter;
    double score = 0;
    std::size_t cells = 0;  // of most rows
    std::vector<HeadRow> rows;
};

bool IsTypedEitherWay(const HeadCell& cell, char delimiter) {
    if (KindOf(cell.text, Decimal::kPoint) == CellKind::kTyped) return true;
    return (delimiter != ',' || cell.isQuoted) && KindOf(cell.text, Decimal::kComma) == CellKind::kTyped;
}

// How evenly, and how much into numbers and times, a delimiter cuts the rows.
Candidate Judge(const Head& head, char delimiter) {
    Candidate candidate{delimiter, 0, 0, {}};
    try {
        candidate.rows = RowsOf(head, delimiter);
    } catch (const Refusal&) {
        return candidate;  // quotation marks that stand elsewhere than at the beginning of cells
    }
    std::map<std::size_t, std::size_t> counts;
    std::size_t rows = 0;
    for (const HeadRow& row : candidate.rows) {
        if (row.isComment && HasComments(candidate.rows)) continue;
        ++counts[row.cells.size()];
        if (++rows == kJudgedRows) break;
    }
    std::size_t most = 0;
    for (const auto& [cells, count] : counts) {
        if (cells > 1 && count >= most) {
            most = count;
            candidate.cells = cells;
        }
    }
    if (most == 0) return candidate;
    std::size_t typed = 0;
    std::size_t all = 0;
    std::size_t even = 0;
    std::size_t judged = 0;
    for (const HeadRow& row : candidate.rows) {
        if (row.isComment && HasComments(candidate.rows)) continue;
        if (++judged > kJudgedRows) break;
        if (row.cells.size() != candidate.cells) continue;
        ++even;
        if (even == 1 && rows > 1) continue;  // likely the names
        for (const HeadCell& cell : row.cells) {
            ++all;
            if (cell.text.empty() || IsTypedEitherWay(cell, delimiter)) ++typed;
        }
    }
    const double isTyped = all == 0 ? 0 : static_cast<double>(typed) / static_cast<double>(all);
    // Titles and units aside, rows have equally many cells; those with empty ones at their ends have fewer.
    const double isEven = static_cast<double>(even) / static_cast<double>(rows);
    candidate.score = isEven * (0.1 + 0.9 * isTyped) * (delimiter == kBlanks ? 0.9 : 1);
    return candidate;
}

// Whether "12,5" may be one cell or two, and nothing tells.
bool MayBeDecimals(const Candidate& commas) {
    if (commas.delimiter != ',' || commas.cells != 2) return false;
    // Names that are cut in two as the rows are settle it; two numbers are no names.
    const HeadRow& first = commas.rows.front();
    if (first.cells.size() == 2 && !IsTypedEitherWay(first.cells[0], ';')) return false;
    for (const HeadRow& row : commas.rows) {
        if (row.isComment || row.cells.size() != 2) continue;
        const std::string& whole = row.cells[0].text;
        const std::string& decimals = row.cells[1].text;
        if (!IsTypedEitherWay(row.cells[0], ';') && &row == &first) continue;
        std::string joined = whole;
        joined += ',';
        joined += decimals;
        const bool isCut = KindOf(joined, Decimal::kComma) == CellKind::kTyped &&
                           whole.find(':') == std::string::npos && !row.cells[0].isQuoted;
        if (!isCut) return false;
    }
    return true;
}

char ChooseDelimiter(const Head& head) {
    std::vector<Candidate> candidates;
    for (const char delimiter : {'\t', ';', ',', '|', kBlanks}) candidates.push_back(Judge(head, delimiter));
    const auto isLess = [](const Candidate& left, const Candidate& right) { return left.score < right.score; };
    const auto best = std::max_element(candidates.begin(), candidates.end(), isLess);
    if (best->score == 0) return ',';  // a single column
    for (const Candidate& other : candidates) {
        if (&other == &*best || other.score != best->score || other.delimiter == kBlanks) continue;
        throw Refusal("cells may be parted by " + NameOf(best->delimiter) + " or by " + NameOf(other.delimiter) +
                          "; --set delimiter=" + NameOf(best->delimiter) +
                          " or --set delimiter=" + NameOf(other.delimiter) + " says which",
                      best->rows.front().line);
    }
    if (MayBeDecimals(*best)) {
        throw Refusal(
            "the comma may part cells or stand before decimals; --set delimiter=comma, or --set decimal=comma with "
            "--set delimiter=semicolon, says which",
            best->rows.front().line);
    }
    return best->delimiter;
}

Decimal ChooseDecimal(const Dialect& dialect) {
    std::size_t points = 0;
    std::size_t commas = 0;
    std::int64_t pointLine = -1;
    std::int64_t openLine = -1;  // of a cell that may be either
    std::string open;
    for (const HeadRow& row : dialect.rows) {
        for (const HeadCell& cell : row.cells) {
            switch (SignOf(cell.text)) {
                case NumberSign::kPoint:
                    if (points++ == 0) pointLine = row.line;
                    break;
                case NumberSign::kComma:
                    ++commas;
                    break;
                case NumberSign::kGroupOrComma:
                    if (openLine < 0) open = cell.text;
                    if (openLine < 0) openLine = row.line;
                    break;
                case NumberSign::kNone:
                    break;
            }
        }
    }
    if (points != 0 && commas != 0) {
        throw Refusal(
            "decimals stand behind points in some cells, behind commas in others; --set decimal=point or "
            "--set decimal=comma says which are numbers",
            pointLine);
    }
    if (commas != 0) return Decimal::kComma;
    if (points != 0 || openLine < 0) return Decimal::kPoint;
    if (dialect.delimiter == ';') return Decimal::kComma;  // what it is there for
    throw Refusal("\"" + std::string(Trimmed(open)) +
                      "\" may have decimals behind its comma or thousands before it; --set decimal=comma or --set "
                      "decimal=point says which",
                  openLine);
}

}  // namespace

CellKind KindOf(std::string_view cell, Decimal decimal) {
    const std::string_view text = Trimmed(cell);
    if (text.empty()) return CellKind::kEmpty;
    std::string room;
    std::string_view digits;
    if (ReadNumber(text, decimal, room, digits)) return CellKind::kTyped;
    CalendarTime time;
    Moment ofDay;
    const bool isTime = ReadCalendarTime(text, DateOrder::kDayFirst, time) != TimeState::kNone ||
                        ReadCalendarTime(text, DateOrder::kMonthFirst, time) != TimeState::kNone ||
                        ReadTimeOfDay(text, ofDay) != TimeState::kNone;
    if (isTime) return CellKind::kTyped;
    return IsMarker(text) ? CellKind::kMarker : CellKind::kText;
}

std::string NameOf(char delimiter) {
    switch (delimiter) {
        case ',':
            return "comma";
        case ';':
            return "semicolon";
        case '\t':
            return "tab";
        case '|':
            return "pipe";
        case kBlanks:
            return "blank";
        default:
            return std::string(1, delimiter);
    }
}

Dialect FindDialect(const Head& head, const Options& options) {
    Dialect dialect;
    dialect.encoding = head.encoding;
    dialect.delimiter = options.delimiter ? *options.delimiter : ChooseDelimiter(head);
    std::vector<HeadRow> rows = RowsOf(head, dialect.delimiter);
    if (rows.empty()) throw Refusal("there are no rows");
    dialect.hasComments = HasComments(rows);
    for (HeadRow& row : rows) {
        (row.isComment && dialect.hasComments ? dialect.comments : dialect.rows).push_back(std::move(row));
    }
    if (dialect.rows.empty()) throw Refusal("there are no rows but comments");
    dialect.decimal = options.decimal ? *options.decimal : ChooseDecimal(dialect);
    return dialect;
}

}  // namespace series
