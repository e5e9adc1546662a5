// The rows of a table that have a time, in order.
#pragma once

#include <cstdint>
#include <string>

#include "dialect.h"
#include "header.h"
#include "row_reader.h"
#include "time_column.h"

namespace series {

// Rows of one kind: how many, and where the first stands.
struct RowCount {
    std::uint64_t count = 0;
    std::int64_t line = -1;
    std::int64_t offset = -1;

    void Add(const RowReader& row) {
        if (count++ != 0) return;
        line = row.Line();
        offset = row.Offset();
    }
};

// What was left out, and why.
struct LeftOut {
    RowCount longer;    // with more filled cells than there are columns
    RowCount untimed;   // whose time cannot be read
    RowCount backward;  // with an earlier time than a row before them

    std::uint64_t Count() const { return longer.count + untimed.count + backward.count; }
};

// Reads a table from its first row on.
class Body {
public:
    // All outlive it.
    Body(const std::string& path, const Dialect& dialect, const Header& header, const TimeReading& reading);

    // Goes to the next row that is not left out; false at the end. Throws Refusal for a time with more than nine
    // decimals of a second.
    bool Next();

    const RowReader& Row() const { return rows_; }
    const Moment& Time() const { return time_; }
    const series::LeftOut& LeftOut() const { return leftOut_; }
    std::uint64_t Midnights() const { return times_.Midnights(); }

private:
    bool HasTime();

    const Dialect& dialect_;
    const Header& header_;
    const TimeReading& reading_;
    FileSource source_;
    RowReader rows_;
    TimeReader times_;
    Moment time_;
    bool hasTime_ = false;
    series::LeftOut leftOut_;
};

}  // namespace series
