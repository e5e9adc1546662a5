#include "survey.h"

#include <limits>

#include "refusal.h"

namespace series {

namespace {

constexpr std::uint32_t kMostDecimals = 9;

// Ticks of nanoseconds are 64-bit numbers, which end in the year 2262.
void CheckNanoseconds(const Survey& survey, const Moment& time, const RowReader& row) {
    constexpr std::int64_t kMostSeconds = std::numeric_limits<std::int64_t>::max() / 1'000'000'000;
    if (survey.decimals != kMostDecimals || (time.seconds < kMostSeconds && time.seconds > -kMostSeconds)) return;
    throw Refusal("times with nine decimals of a second can be from 1678 to 2261 only", row.Line(), row.Offset());
}

class Surveyor {
public:
    Surveyor(const std::string& path, const Dialect& dialect, const Header& header, const TimeReading& reading)
        : body_(path, dialect, header, reading), decimal_(dialect.decimal) {
        survey_.reading = reading;
        survey_.columns.resize(header.names.size());
    }

    Survey Run() {
        while (body_.Next()) {
            ++survey_.rows;
            CountDecimals();
            LookAtCells();
        }
        survey_.leftOut = body_.LeftOut();
        survey_.midnights = body_.Midnights();
        return survey_;
    }

private:
    void CountDecimals() {
        const Moment& time = body_.Time();
        while (time.nanoseconds % unit_ != 0) {
            unit_ /= 10;
            ++survey_.decimals;
        }
        CheckNanoseconds(survey_, time, body_.Row());
    }

    void LookAtCells() {
        const RowReader& row = body_.Row();
        const bool isPoint = decimal_ == Decimal::kPoint;
        for (std::size_t k = 0; k < row.Count(); ++k) {
            const Cell cell = row.At(k);
            if (cell.text.empty() || survey_.reading.Uses(k)) continue;
            ColumnFacts& facts = survey_.columns[k];
            std::string_view digits;
            if (isPoint && IsPlainNumber(cell.text)) {
                ++facts.numbers;
                continue;
            }
            facts.arePlain = false;
            if (facts.texts == 0 && ReadNumber(cell.text, decimal_, room_, digits)) {
                ++facts.numbers;
            } else if (facts.texts == 0 && IsMarker(cell.text)) {
                facts.markers.Add(row);
            } else {
                ++facts.texts;
            }
        }
    }

    Body body_;
    Decimal decimal_;
    Survey survey_;
    std::int32_t unit_ = 1'000'000'000;  // nanoseconds of the last decimal
    std::string room_;
};

// With the rows that are left out it is the worse reading.
const Survey& BetterOf(const Survey& dayFirst, const Survey& monthFirst) {
    const std::uint64_t untimed[] = {dayFirst.leftOut.untimed.count, monthFirst.leftOut.untimed.count};
    if (untimed[0] != untimed[1]) return untimed[0] < untimed[1] ? dayFirst : monthFirst;
    const std::uint64_t backward[] = {dayFirst.leftOut.backward.count, monthFirst.leftOut.backward.count};
    if (backward[0] != backward[1]) return backward[0] < backward[1] ? dayFirst : monthFirst;
    throw Refusal("the dates can be read as day/month and as month/day; --set dates=dmy or --set dates=mdy says which");
}

}  // namespace

Survey TakeSurvey(const std::string& path, const Dialect& dialect, const Header& header,
                  const std::vector<TimeReading>& readings) {
    Survey survey = Surveyor(path, dialect, header, readings.front()).Run();
    if (readings.size() == 2) survey = BetterOf(survey, Surveyor(path, dialect, header, readings.back()).Run());
    if (survey.rows != 0) return survey;
    const LeftOut& leftOut = survey.leftOut;
    if (leftOut.longer.count != 0) {
        throw Refusal("every row has more cells than the header has names", leftOut.longer.line, leftOut.longer.offset);
    }
    if (leftOut.untimed.count != 0) {
        throw Refusal("no row has a time that can be read", leftOut.untimed.line, leftOut.untimed.offset);
    }
    throw Refusal("there are no rows below the header");
}

}  // namespace series
