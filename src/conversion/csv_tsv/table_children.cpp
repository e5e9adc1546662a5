#include "conversion/csv_tsv/table_children.h"

#include <algorithm>
#include <cstring>

#include "conversion/counting_name.h"
#include "conversion/native_frame.h"
#include "errors/progress.h"

namespace zentor {

using ZT_PLUGIN::Child;
using ZT_PLUGIN::ChildSource;
using ZT_PLUGIN::StaticKind;

namespace {

// Names are cut to this many bytes.
constexpr std::size_t kLongestName = 1023;

using TableName = CountingName<kLongestName>;

std::string CellNamePrefix(std::string_view header) {
    std::string prefix(header.substr(0, std::min(header.find('\0'), kLongestName)));  // as far as a C string goes
    prefix += ' ';
    return prefix;
}

// The cells of one column, from the first row to the last.
class ColumnCells final : public ChildSource {
public:
    ColumnCells(TableIndex& table, LossWatch& watch, std::string_view header, std::size_t column, TableName& matchNames)
        : table_(table),
          watch_(watch),
          displayName_(CellNamePrefix(header)),
          column_(column),
          isNumeric_(table.isNumericColumn[column]),
          matchNames_(matchNames) {}

    bool Next(Child& child) override {
        constexpr std::size_t kReportedAtOnce = 0x1000;  // rows
        if (row_ == table_.rows.Count()) return false;
        if (row_ % kReportedAtOnce == 0) [[unlikely]]
            ReportProgress(column_ * table_.rows.Count() + row_);
        child.group = nullptr;
        child.node.matchName = matchNames_.Next();
        child.node.displayName = displayName_.Next();
        const std::size_t at = table_.rows.Get(row_);
        const std::size_t end = isNumeric_ ? ReadNumber(child, at) : ReadText(child, at);
        // A row that has no more cells stays at the end of its line: its missing cells are empty ones.
        const bool hasMore = end < table_.text.size() && table_.text[end] == table_.delimiter;
        table_.rows.Set(row_, hasMore ? end + 1 : end);
        ++row_;
        return true;
    }

private:
    std::size_t ReadNumber(Child& child, std::size_t at) {
        child.node.kind = StaticKind::kNumber;
        const NumericCell cell = ReadNumericCell(table_.text, at, table_.delimiter, table_.form);
        child.node.number = cell.value;
        child.node.numberText.length = 0;
        if (cell.end == std::string_view::npos) {  // an empty cell
            child.node.number = 0;
            watch_.Count(ZT_NOTICE_EMPTY_CELLS, at);
            return at;
        }
        if (cell.canonicalEnd != nullptr) {
            TakeNumberText(child.node.numberText, cell);
        } else {
            child.node.numberText = watch_.Format(cell.value, cell.end - at, at);
        }
        return cell.end;
    }

    // Takes the whole room at once where the table goes on for as long.
    void TakeNumberText(NumberText& text, const NumericCell& cell) const {
        text.length = static_cast<std::uint32_t>(cell.canonicalEnd - cell.number);
        if (table_.text.data() + table_.text.size() - cell.number >= std::ptrdiff_t{NumberText::kRoom}) {
            std::memcpy(text.bytes, cell.number, NumberText::kRoom);
        } else {
            std::memcpy(text.bytes, cell.number, text.length);
        }
    }

    std::size_t ReadText(Child& child, std::size_t at) {
        child.node.kind = StaticKind::kString;
        const std::size_t end = EndOfCell(table_.text, at, table_.delimiter);
        child.node.text = table_.text.substr(at, end - at);
        watch_.CheckText(child.node.text, at);
        return end;
    }

    TableIndex& table_;
    LossWatch& watch_;
    TableName displayName_;
    std::size_t column_;
    bool isNumeric_;
    TableName& matchNames_;
    std::size_t row_ = 0;
};

class TableColumns final : public ChildSource {
public:
    TableColumns(const ZT_ConverterHandlerBase& converter, TableIndex& table, LossWatch& watch)
        : converter_(converter), table_(table), watch_(watch), headers_(table.header) {}

    bool Next(Child& child) override {
        if (column_ == table_.columnCount) return false;
        const std::string_view header = headers_.substr(0, headers_.find(table_.delimiter));
        watch_.CheckText(header, static_cast<std::size_t>(header.data() - table_.text.data()));
        headers_.remove_prefix(std::min(header.size() + 1, headers_.size()));
        const auto group = NativeCreateGroup(&converter_, matchNames_.Next(), header);
        group->SetChildSource(std::make_unique<ColumnCells>(table_, watch_, header, column_, matchNames_));
        child.group = group;
        ++column_;
        return true;
    }

private:
    const ZT_ConverterHandlerBase& converter_;
    TableIndex& table_;
    LossWatch& watch_;
    std::string_view headers_;
    std::size_t column_ = 0;
    TableName matchNames_{"data"};  // of all nodes, in the order in which they are written
};

}  // namespace

std::unique_ptr<ChildSource> MakeTableChildren(const ZT_ConverterHandlerBase& converter, TableIndex& table,
                                               LossWatch& watch) {
    BeginStep(kInputChecked, kDocumentMade, table.rows.Count() * table.columnCount);
    return std::make_unique<TableColumns>(converter, table, watch);
}

}  // namespace zentor
