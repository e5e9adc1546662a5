#include "header.h"

#include <algorithm>

#include "refusal.h"
#include "row_reader.h"
#include "units.h"
#include "words.h"

namespace series {

namespace {

class HeaderFinder {
public:
    explicit HeaderFinder(const Dialect& dialect) : dialect_(dialect), rows_(dialect.rows) {
        MakeProfile();
        while (firstRow_ < rows_.size() && !IsLikeRows(rows_[firstRow_])) ++firstRow_;
        if (firstRow_ == rows_.size()) firstRow_ = isTyped_.empty() && rows_.size() > 1 ? 1 : 0;
    }

    Header Find(std::optional<std::int64_t> headerLine) {
        if (!headerLine) {
            FindNames();
        } else if (*headerLine != 0) {
            FindAt(*headerLine);
        }
        return Make();
    }

private:
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    // In which columns the later rows have numbers and times.
    void MakeProfile() {
        std::vector<std::size_t> typed;
        std::vector<std::size_t> filled;
        constexpr std::size_t kFew = 20;  // of which titles, names and units may be most
        const std::size_t rows = rows_.size();
        for (std::size_t k = rows < kFew ? rows - std::max<std::size_t>(rows / 3, 1) : rows / 2; k < rows; ++k) {
            const HeadRow& row = rows_[k];
            width_ = std::max(width_, row.cells.size());
            typed.resize(width_);
            filled.resize(width_);
            for (std::size_t column = 0; column < row.cells.size(); ++column) {
                const CellKind kind = KindOf(row.cells[column].text, dialect_.decimal);
                if (kind == CellKind::kTyped) ++typed[column];
                if (kind == CellKind::kTyped || kind == CellKind::kText) ++filled[column];
            }
        }
        bool isAny = false;
        std::vector<bool> isTyped(width_);
        for (std::size_t column = 0; column < width_; ++column) {
            isTyped[column] = typed[column] != 0 && typed[column] * 10 >= filled[column] * 9;
            isAny = isAny || isTyped[column];
        }
        if (isAny) isTyped_ = isTyped;
    }

    // Names may be numbers, but hardly the first of them; and a row may have a text where others have numbers.
    bool IsLikeRows(const HeadRow& row) const {
        std::size_t typed = 0;
        std::size_t texts = 0;
        for (std::size_t column = 0; column < std::min(row.cells.size(), isTyped_.size()); ++column) {
            if (!isTyped_[column]) continue;
            const CellKind kind = KindOf(row.cells[column].text, dialect_.decimal);
            if (kind == CellKind::kText && typed + texts == 0) return false;
            if (kind == CellKind::kTyped) ++typed;
            if (kind == CellKind::kText) ++texts;
        }
        return typed != 0 && typed >= texts;
    }

    // Whether it has about as many cells as the rows.
    bool IsWide(const HeadRow& row) const {
        const std::size_t filled = static_cast<std::size_t>(std::count_if(
            row.cells.begin(), row.cells.end(), [](const HeadCell& cell) { return !Trimmed(cell.text).empty(); }));
        return filled * 2 > width_ || filled == width_;
    }

    static double ShareOfUnits(const HeadRow& row) {
        const auto units = std::count_if(row.cells.begin(), row.cells.end(),
                                         [](const HeadCell& cell) { return LooksLikeUnit(cell.text); });
        return static_cast<double>(units) / static_cast<double>(row.cells.size());
    }
    // A few, under some of the names.
    static bool AreOnlyUnits(const HeadRow& row) { return ShareOfUnits(row) == 1; }
    static bool AreUnits(const HeadRow& row) { return ShareOfUnits(row) >= 0.5; }

    void FindNames() {
        if (firstRow_ > 1 && AreOnlyUnits(rows_[firstRow_ - 1]) && IsWide(rows_[firstRow_ - 2])) {
            units_ = firstRow_ - 1;
            names_ = firstRow_ - 2;
            return;
        }
        if (firstRow_ == 0 || !IsWide(rows_[firstRow_ - 1])) {
            // A single wide line may stand above an empty one or a remark.
            for (std::size_t k = firstRow_; k-- > 0 && names_ == kNone;) {
                if (IsWide(rows_[k])) names_ = k;
            }
            return;
        }
        names_ = firstRow_ - 1;
        if (firstRow_ < 2 || !IsWide(rows_[firstRow_ - 2])) return;
        const double last = ShareOfUnits(rows_[firstRow_ - 1]);
        const double before = ShareOfUnits(rows_[firstRow_ - 2]);
        if (last > before && AreUnits(rows_[firstRow_ - 1])) {
            names_ = firstRow_ - 2;
            units_ = firstRow_ - 1;
        } else if (AreUnits(rows_[firstRow_ - 2])) {
            units_ = firstRow_ - 2;
        }
    }

    void FindAt(std::int64_t line) {
        const auto isThere = [line](const HeadRow& row) { return row.line == line; };
        const auto found = std::find_if(rows_.begin(), rows_.end(), isThere);
        if (found == rows_.end()) {
            throw Refusal(
                "there is no header in line " + std::to_string(line) + "; --set header=none or the right line says so",
                line);
        }
        names_ = static_cast<std::size_t>(found - rows_.begin());
        firstRow_ = names_ + 1;
        if (firstRow_ >= rows_.size() || IsLikeRows(rows_[firstRow_]) || !AreUnits(rows_[firstRow_])) return;
        units_ = firstRow_++;
    }

    // Names in a comment right above the first row: "# time speed".
    bool TakeCommentNames(Header& header) const {
        if (firstRow_ != 0 || dialect_.comments.empty() || rows_.empty()) return false;
        const HeadRow* last = nullptr;
        for (const HeadRow& comment : dialect_.comments) {
            if (comment.line < rows_.front().line) last = &comment;
        }
        if (last == nullptr) return false;
        HeadRow names = *last;
        std::string& first = names.cells.front().text;
        first.erase(0, first.find_first_not_of("#%/"));
        if (Trimmed(first).empty()) names.cells.erase(names.cells.begin());
        const auto isText = [this](const HeadCell& cell) {
            return KindOf(cell.text, dialect_.decimal) == CellKind::kText;
        };
        if (names.cells.size() != width_ || !std::all_of(names.cells.begin(), names.cells.end(), isText)) return false;
        header.names = TextsOf(names);
        return true;
    }

    std::size_t MostCells() const {
        std::size_t most = 0;
        for (std::size_t k = firstRow_; k < rows_.size(); ++k) most = std::max(most, rows_[k].cells.size());
        return most;
    }

    static std::vector<std::string> TextsOf(const HeadRow& row) {
        std::vector<std::string> texts;
        for (const HeadCell& cell : row.cells) texts.emplace_back(Trimmed(cell.text));
        return texts;
    }

    Header Make() const {
        Header header;
        header.isThere = names_ != kNone;
        header.firstRowLine = firstRow_ < rows_.size() ? rows_[firstRow_].line : rows_.back().line + 1;
        if (header.isThere) {
            header.names = TextsOf(rows_[names_]);
        } else {
            header.isThere = TakeCommentNames(header);
        }
        if (!header.isThere) header.names.resize(MostCells());
        if (header.names.size() >= RowReader::kMostCells) {
            throw Refusal("there are more than 65535 columns", rows_[names_ == kNone ? 0 : names_].line);
        }
        if (units_ != kNone) {
            for (const std::string& unit : TextsOf(rows_[units_])) header.units.emplace_back(WithoutBrackets(unit));
        }
        for (std::size_t k = 0; k < firstRow_; ++k) {
            if (k == names_ || k == units_) continue;
            header.title += (header.title.empty() ? "" : "\n") + std::string(Trimmed(rows_[k].text));
        }
        return header;
    }

    const Dialect& dialect_;
    const std::vector<HeadRow>& rows_;
    std::size_t width_ = 0;
    std::vector<bool> isTyped_;  // by column; empty when no column is
    std::size_t firstRow_ = 0;
    std::size_t names_ = kNone;
    std::size_t units_ = kNone;
};

}  // namespace

std::string Header::NameOf(std::size_t column) const {
    if (column < names.size() && !names[column].empty()) return names[column];
    return "column" + std::to_string(column);
}

Header FindHeader(const Dialect& dialect, std::optional<std::int64_t> headerLine) {
    return HeaderFinder(dialect).Find(headerLine);
}

}  // namespace series
