#include "time_choice.h"

#include <algorithm>
#include <charconv>

#include "refusal.h"
#include "units.h"
#include "words.h"

namespace series {

namespace {

using Kind = TimeReading::Kind;

// What a column is called, as far as times go; dates speak for themselves.
enum Rank : std::uint8_t { kNoName, kDates, kUnitName, kNameAmongOthers, kName };

constexpr std::string_view kNames =
    "|t|ts|time|times|timestamp|timestamps|time stamp|date|dates|datetime|date time|date/time|date_time|date and time|"
    "utc|utc time|time utc|gps time|local time|local_time|unix|unix time|unix_time|unixtime|epoch|elapsed|elapsed time|"
    "time_stamp|zeit|uhrzeit|datum|zeitstempel|datum/zeit|datum/uhrzeit|datum uhrzeit|messzeit|heure|temps|date heure|"
    "horodatage|fecha|hora|fecha/hora|tiempo|marca de tiempo|data|ora|data/ora|tempo|data hora|data/hora|"
    "\xD0\xB2\xD1\x80\xD0\xB5\xD0\xBC\xD1\x8F|\xD0\xB4\xD0\xB0\xD1\x82\xD0\xB0|\xE6\x97\xB6\xE9\x97\xB4|"
    "\xE6\x97\xA5\xE6\x9C\x9F|\xE6\x97\xA5\xE6\x99\x82|\xE6\x99\x82\xE5\x88\xBB|\xE6\x99\x82\xE9\x96\x93|"
    "\xEC\x8B\x9C\xEA\xB0\x84|\xEB\x82\xA0\xEC\xA7\x9C|";
constexpr std::string_view kWords =
    "|time|timestamp|datetime|date|utc|unix|epoch|elapsed|zeit|uhrzeit|datum|zeitstempel|heure|fecha|hora|tiempo|";
// Names of dates, whose numbers are no seconds.
constexpr std::string_view kDateNames = "|date|dates|datum|fecha|data|";

bool IsAmong(std::string_view word, std::string_view list) {
    return list.find('|' + std::string(word) + '|') != std::string_view::npos;
}

std::string WithoutUnit(const std::string& name) {
    const std::string_view unit = BracketedUnit(name);
    if (unit.empty()) return Lower(Trimmed(name));
    const std::string_view text(name);
    return Lower(Trimmed(text.substr(0, text.find_last_of("([{<"))));
}

Rank RankOf(const std::string& name) {
    const std::string lower = WithoutUnit(name);
    if (lower.empty()) return kNoName;
    if (lower == "t" && Trimmed(name).front() == 'T') return kNoName;  // a temperature
    if (IsAmong(lower, kNames)) return kName;
    const std::vector<std::string> words = WordsOf(name);
    if (words.size() == 2 && IsAmong(words[0], kNames) && TimeUnitOf(words[1])) return kName;  // time_ms
    if (std::any_of(words.begin(), words.end(), [](const auto& word) { return IsAmong(word, kWords); })) {
        return kNameAmongOthers;
    }
    const auto isUnit = [](const std::string& word) { return TimeUnitOf(word).has_value(); };
    return !words.empty() && words[0].size() > 1 && std::all_of(words.begin(), words.end(), isUnit) ? kUnitName
                                                                                                    : kNoName;
}

// A time in a number without a unit: seconds, or by their size parts of them since 1970.
TimeUnit UnitBySize(std::int64_t number) {
    const std::int64_t size = number < 0 ? -number : number;
    if (size >= 100'000'000'000'000'000) return {9, 1};
    if (size >= 100'000'000'000'000) return {6, 1};
    if (size >= 100'000'000'000) return {3, 1};
    return {0, 1};
}

// How the values of a column go on. All times of a day have one date.
enum Course : std::uint8_t { kFalling, kFlat, kRising };

class TimeFinder {
public:
    TimeFinder(const Dialect& dialect, const Header& header, const Options& options)
        : dialect_(dialect), header_(header), options_(options) {
        for (const HeadRow& row : dialect.rows) {
            if (row.line >= header.firstRowLine) rows_.push_back(&row);
        }
    }

    std::vector<TimeReading> Find() {
        if (options_.rate) {
            TimeReading reading;
            reading.kind = Kind::kRate;
            reading.rate = *options_.rate;
            return {reading};
        }
        if (rows_.empty()) throw Refusal("there are no rows below the header");
        if (options_.time) return FindNamed(*options_.time);
        std::vector<Candidate> candidates;
        for (std::size_t column = 0; column < header_.names.size(); ++column) {
            Candidate candidate;
            if (Judge(column, false, candidate)) candidates.push_back(std::move(candidate));
        }
        JoinDatesAndTimes(candidates);
        return Best(candidates);
    }

private:
    struct Candidate {
        std::vector<TimeReading> readings;
        Rank rank = kNoName;
        std::size_t column = 0;
        bool hasTimeOfDay = false;
        Course course = kFalling;
    };

    std::string Called(std::size_t column) const {
        return "\"" + header_.NameOf(column) + "\" (" + std::to_string(column) + ")";
    }

    // How many of the filled cells of a column a reading can read.
    struct Trial {
        std::size_t filled = 0;
        std::size_t read = 0;
        std::size_t falls = 0;
        bool hasRisen = false;
        bool hasTimeOfDay = false;
        bool dependsOnOrder = false;

        // Whoever calls them times may have some that cannot be read, or go back.
        bool IsMost(Rank rank) const { return read != 0 && read * 10 >= filled * (rank == kNoName ? 9 : 5); }
        Course CourseOf(Rank rank) const {
            if (read > 1 && !hasRisen) return falls == 0 && rank != kNoName ? kFlat : kFalling;
            return falls * (rank == kNoName ? 20 : 3) <= read ? kRising : kFalling;
        }
    };

    Trial Try(const TimeReading& reading) const {
        Trial trial;
        TimeReader reader(reading, dialect_.decimal);
        Moment last;
        for (const HeadRow* row : rows_) {
            const std::string& cell = row->At(reading.column);
            if (Trimmed(cell).empty() || IsMarker(cell)) continue;
            ++trial.filled;
            Moment moment;
            if (reader.Next(cell, row->At(reading.second), moment) == TimeState::kNone) continue;
            if (reading.kind == Kind::kCalendar) {
                CalendarTime time;
                ReadCalendarTime(cell, reading.order, time);
                trial.hasTimeOfDay = trial.hasTimeOfDay || time.hasTimeOfDay;
                trial.dependsOnOrder = trial.dependsOnOrder || time.dependsOnOrder;
            }
            if (++trial.read > 1 && moment < last) ++trial.falls;
            trial.hasRisen = trial.hasRisen || (trial.read > 1 && last < moment);
            last = moment;
        }
        return trial;
    }

    bool JudgeCalendar(std::size_t column, Candidate& candidate) const {
        const auto isCompact = [&](const HeadRow* row) {
            const std::string& cell = row->At(column);
            return Trimmed(cell).empty() || IsCompactDate(cell);
        };
        std::string room;
        std::string_view digits;
        const auto isNumber = [&](const HeadRow* row) {
            return ReadNumber(row->At(column), dialect_.decimal, room, digits);
        };
        // Numbers of eight digits are dates when all of them are, and nothing calls them otherwise.
        const bool areNumbers = std::any_of(rows_.begin(), rows_.end(), isNumber);
        if (areNumbers && !std::all_of(rows_.begin(), rows_.end(), isCompact)) return false;
        if (areNumbers && UnitFromNames(column)) return false;
        TimeReading reading;
        reading.kind = Kind::kCalendar;
        reading.column = column;
        std::vector<std::pair<TimeReading, Trial>> good;
        for (const DateOrder order : {DateOrder::kDayFirst, DateOrder::kMonthFirst}) {
            if (options_.dates && order != *options_.dates) continue;
            reading.order = order;
            const Trial trial = Try(reading);
            if (trial.IsMost(candidate.rank)) good.emplace_back(reading, trial);
        }
        if (good.empty()) return false;
        // Where one order reads fewer, it is not the one.
        if (good.size() == 2 && good[0].second.read != good[1].second.read) {
            good.erase(good.begin() + (good[0].second.read < good[1].second.read ? 0 : 1));
        }
        if (good.size() == 2 && !good[0].second.dependsOnOrder) good.pop_back();
        for (const auto& [one, trial] : good) {
            candidate.readings.push_back(one);
            candidate.course = std::max(candidate.course, trial.CourseOf(candidate.rank));
            candidate.hasTimeOfDay = candidate.hasTimeOfDay || trial.hasTimeOfDay;
        }
        return true;
    }

    bool JudgeTimeOfDay(std::size_t column, Candidate& candidate) const {
        TimeReading reading;
        reading.kind = Kind::kTimeOfDay;
        reading.column = column;
        const Trial trial = Try(reading);
        if (!trial.IsMost(candidate.rank)) return false;
        candidate.readings = {reading};
        candidate.course = trial.CourseOf(candidate.rank);
        return true;
    }

    // That of the name, or of the line of units.
    std::optional<TimeUnit> UnitFromNames(std::size_t column) const {
        if (const auto unit = TimeUnitOf(header_.UnitOf(column))) return unit;
        const std::string name = header_.NameOf(column);
        if (const auto unit = TimeUnitOf(BracketedUnit(name))) return unit;
        const std::vector<std::string> words = WordsOf(name);
        if (words.empty() || (words.size() == 1 && words[0].size() == 1)) return std::nullopt;
        for (const std::string& word : {words.back(), words.front()}) {
            const auto unit = TimeUnitOf(word);
            if (unit && unit->factor != 86400) return unit;  // "day" in a name is no unit
        }
        return std::nullopt;
    }

    bool JudgeNumber(std::size_t column, Candidate& candidate) const {
        if (IsAmong(WithoutUnit(header_.NameOf(column)), kDateNames) && !options_.time) return false;
        TimeReading reading;
        reading.column = column;
        reading.unit = {0, 1};
        if (const auto unit = UnitFromNames(column)) {
            reading.unit = *unit;
        } else {
            Moment first;
            for (const HeadRow* row : rows_) {
                // As billions: the largest of them are nanoseconds since 1970.
                const TimeState state = ReadNumberTime(row->At(column), dialect_.decimal, 9, first);
                if (state == TimeState::kNone) continue;
                constexpr std::int64_t kBillion = 1'000'000'000;
                reading.unit = UnitBySize(std::clamp(first.seconds, -kBillion, kBillion) * kBillion);
                break;
            }
        }
        const Trial trial = Try(reading);
        if (!trial.IsMost(candidate.rank)) return false;
        candidate.readings = {reading};
        candidate.course = trial.CourseOf(candidate.rank);
        return true;
    }

    // Whether a column can be read as times. `isAsked`: by the option, whatever its name and values.
    bool Judge(std::size_t column, bool isAsked, Candidate& candidate) const {
        candidate = {};
        candidate.column = column;
        candidate.rank = header_.isThere ? RankOf(header_.names[column]) : kNoName;
        if (JudgeCalendar(column, candidate)) {
            candidate.rank = std::max(candidate.rank, kDates);
            return true;
        }
        if (JudgeTimeOfDay(column, candidate)) return true;
        // Numbers that rise may be anything, unless they have the name of a time or there are no names.
        const bool mayBeNumbers = isAsked || candidate.rank != kNoName || !header_.isThere;
        return mayBeNumbers && JudgeNumber(column, candidate) && (isAsked || candidate.course == kRising);
    }

    std::vector<TimeReading> FindNamed(const std::string& name) const {
        std::size_t column = TimeReading::kNoColumn;
        for (std::size_t k = header_.names.size(); k-- > 0;) {
            if (IsSame(header_.names[k], Lower(name))) column = k;
        }
        for (std::size_t k = header_.names.size(); k-- > 0;) {
            if (header_.names[k] == name) column = k;
        }
        if (column == TimeReading::kNoColumn) {
            std::size_t index = 0;
            const auto result = std::from_chars(name.data(), name.data() + name.size(), index);
            const bool isIndex = result.ec == std::errc() && result.ptr == name.data() + name.size();
            if (!isIndex || index >= header_.names.size()) {
                throw Refusal("there is no column \"" + name + "\"; there are " + ListOfColumns());
            }
            column = index;
        }
        std::vector<Candidate> candidates;
        for (std::size_t k = column == 0 ? 0 : column - 1; k < std::min(column + 2, header_.names.size()); ++k) {
            Candidate candidate;
            if (Judge(k, k == column, candidate)) candidates.push_back(std::move(candidate));
        }
        JoinDatesAndTimes(candidates);
        for (const Candidate& candidate : candidates) {
            if (candidate.readings.front().Uses(column)) return candidate.readings;
        }
        throw Refusal("the column " + Called(column) + " has no times that can be read", rows_.front()->line);
    }

    std::string ListOfColumns() const {
        constexpr std::size_t kMost = 20;
        std::string list;
        for (std::size_t k = 0; k < std::min(header_.names.size(), kMost); ++k) {
            list += (k == 0 ? "" : ", ") + Called(k);
        }
        return list + (header_.names.size() > kMost ? " and more" : "");
    }

    // Dates without times of day and times of day beside them are one time.
    void JoinDatesAndTimes(std::vector<Candidate>& candidates) const {
        const auto isDate = [](const Candidate& candidate) {
            return candidate.readings.front().kind == Kind::kCalendar && !candidate.hasTimeOfDay;
        };
        const auto isTime = [](const Candidate& candidate) {
            return candidate.readings.front().kind == Kind::kTimeOfDay;
        };
        for (std::size_t k = 0; k + 1 < candidates.size(); ++k) {
            Candidate& left = candidates[k];
            Candidate& right = candidates[k + 1];
            if (left.column + 1 != right.column) continue;
            if (!(isDate(left) && isTime(right)) && !(isTime(left) && isDate(right))) continue;
            Candidate& date = isDate(left) ? left : right;
            const std::size_t time = isDate(left) ? right.column : left.column;
            date.rank = std::max({left.rank, right.rank, kNameAmongOthers});
            date.course = kFalling;
            for (TimeReading& reading : date.readings) {
                reading.kind = Kind::kDateAndTime;
                reading.second = time;
                const Trial trial = Try(reading);
                date.course = std::max(date.course, trial.CourseOf(date.rank));
            }
            date.hasTimeOfDay = true;
            candidates.erase(candidates.begin() + static_cast<std::ptrdiff_t>(&date == &left ? k + 1 : k));
        }
    }

    std::vector<TimeReading> Best(const std::vector<Candidate>& candidates) const {
        std::vector<const Candidate*> best;
        const auto isBefore = [](const Candidate& left, const Candidate& right) {
            return left.course != right.course ? left.course > right.course : left.rank > right.rank;
        };
        for (const Candidate& candidate : candidates) {
            if (candidate.course == kFalling || (!best.empty() && isBefore(*best.front(), candidate))) continue;
            if (!best.empty() && isBefore(candidate, *best.front())) best.clear();
            best.push_back(&candidate);
        }
        if (best.size() > 1) {
            throw Refusal("the times may be in column " + Called(best[0]->column) + " or in column " +
                              Called(best[1]->column) + "; --set time=" + std::to_string(best[0]->column) +
                              " or --set time=" + std::to_string(best[1]->column) + " says which",
                          rows_.front()->line);
        }
        if (best.empty()) {
            throw Refusal("no column of times was found among " + ListOfColumns() +
                              "; --set time=NAME names one, --set rate=100 counts 100 rows to a second",
                          rows_.front()->line);
        }
        return best.front()->readings;
    }

    const Dialect& dialect_;
    const Header& header_;
    const Options& options_;
    std::vector<const HeadRow*> rows_;
};

}  // namespace

std::vector<TimeReading> ChooseTime(const Dialect& dialect, const Header& header, const Options& options) {
    return TimeFinder(dialect, header, options).Find();
}

}  // namespace series
