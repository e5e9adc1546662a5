#include "time_cell.h"

#include <algorithm>
#include <cstdlib>
#include <string>

#include <zentor/plugin/iso_time.h>

#include "words.h"

namespace series {

namespace {

constexpr std::int64_t kSecondsOfDay = 86400;
constexpr int kMostDecimals = 9;
// From 0000-01-01 to the end of the year 9999.
constexpr std::int64_t kFirstSecond = -719528 * kSecondsOfDay;
constexpr std::int64_t kLastSecond = 2932897 * kSecondsOfDay - 1;

// Reads a text from its beginning.
class Scanner {
public:
    explicit Scanner(std::string_view text) : rest_(text) {}

    bool IsAtEnd() const { return rest_.empty(); }
    bool IsAt(char c) const { return !rest_.empty() && rest_.front() == c; }
    bool IsAtDigit() const { return !rest_.empty() && IsDigit(rest_.front()); }
    char Peek() const { return rest_.empty() ? '\0' : rest_.front(); }
    bool Skip(char c) {
        if (!IsAt(c)) return false;
        rest_.remove_prefix(1);
        return true;
    }
    bool SkipBlanks() {
        const std::size_t before = rest_.size();
        while (Skip(' ') || Skip('\t')) {
        }
        return rest_.size() != before;
    }
    // How many digits come next.
    std::size_t CountDigits() const {
        std::size_t count = 0;
        while (count != rest_.size() && IsDigit(rest_[count])) ++count;
        return count;
    }
    // Of `count` digits, at most 9, that are there.
    std::int64_t Take(std::size_t count) {
        std::int64_t number = 0;
        for (const char c : rest_.substr(0, count)) number = number * 10 + (c - '0');
        rest_.remove_prefix(count);
        return number;
    }
    // One of `least` to `most` digits, with no digit after it.
    bool TakeNumber(std::size_t least, std::size_t most, std::int64_t& number) {
        const std::size_t count = CountDigits();
        if (count < least || count > most) return false;
        number = Take(count);
        return true;
    }
    std::string_view TakeLetters() {
        std::size_t count = 0;
        while (count != rest_.size() && ((rest_[count] | 0x20) >= 'a' && (rest_[count] | 0x20) <= 'z')) ++count;
        const std::string_view letters = rest_.substr(0, count);
        rest_.remove_prefix(count);
        return letters;
    }

private:
    std::string_view rest_;
};

// After a point or a comma. kTooFine beyond the ninth decimal that is no zero.
TimeState TakeDecimals(Scanner& text, std::int32_t& nanoseconds) {
    std::size_t count = text.CountDigits();
    if (count == 0) return TimeState::kNone;
    nanoseconds = 0;
    for (int k = 0; k < kMostDecimals; ++k) {
        nanoseconds *= 10;
        if (count == 0) continue;
        nanoseconds += static_cast<std::int32_t>(text.Take(1));
        --count;
    }
    TimeState state = TimeState::kRead;
    for (; count != 0; --count) {
        if (text.Take(1) != 0) state = TimeState::kTooFine;
    }
    return state;
}

// 1 to 12 for an English month or its first three letters, else 0.
std::int64_t MonthOf(std::string_view word) {
    constexpr std::string_view kMonths[] = {"january", "february", "march",     "april",   "may",      "june",
                                            "july",    "august",   "september", "october", "november", "december"};
    for (std::size_t k = 0; k < 12; ++k) {
        const bool isMonth = IsSame(word, kMonths[k]) || (word.size() == 3 && IsSame(word, kMonths[k].substr(0, 3)));
        if (isMonth || (k == 8 && IsSame(word, "sept"))) return static_cast<std::int64_t>(k) + 1;
    }
    return 0;
}

struct Date {
    std::int64_t year = 0;
    std::int64_t month = 0;
    std::int64_t day = 0;
};

// Jun 1, 2026
bool TakeNamedMonthDate(Scanner& text, Date& date) {
    date.month = MonthOf(text.TakeLetters());
    text.Skip('.');
    if (date.month == 0 || !text.SkipBlanks() || !text.TakeNumber(1, 2, date.day)) return false;
    text.Skip(',');
    return text.SkipBlanks() && text.TakeNumber(4, 4, date.year);
}

// After a day: -Jun-2026, " June 2026"
bool TakeMonthAndYear(Scanner& text, Date& date) {
    const char mark = text.Peek();
    if (mark == ' ') {
        text.SkipBlanks();
    } else {
        text.Skip(mark);
    }
    date.month = MonthOf(text.TakeLetters());
    text.Skip('.');
    const bool isParted = mark == ' ' ? text.SkipBlanks() : text.Skip(mark);
    return date.month != 0 && isParted && text.TakeNumber(4, 4, date.year);
}

bool IsDateMark(char c) { return c == '-' || c == '/' || c == '.'; }

// 2026-6-1, 20260601
bool TakeYearFirst(Scanner& text, Date& date) {
    const std::size_t digits = text.CountDigits();
    date.year = text.Take(4);
    if (digits > 4) {
        date.month = text.Take(2);
        date.day = text.Take(2);
        return true;
    }
    const char mark = text.Peek();
    if (!IsDateMark(mark)) return false;
    text.Skip(mark);
    return text.TakeNumber(1, 2, date.month) && text.Skip(mark) && text.TakeNumber(1, 2, date.day);
}

bool TakeDate(Scanner& text, DateOrder order, Date& date, bool& dependsOnOrder) {
    if (!text.IsAtDigit()) return TakeNamedMonthDate(text, date);
    const std::size_t digits = text.CountDigits();
    if (digits == 4 || digits == 8 || digits == 14) return TakeYearFirst(text, date);
    std::int64_t first = 0;
    if (!text.TakeNumber(1, 2, first)) return false;
    const char mark = text.Peek();
    if (!IsDateMark(mark) && mark != ' ') return false;
    Scanner ahead = text;
    date.day = first;
    if (TakeMonthAndYear(ahead, date)) {
        text = ahead;
        return true;
    }
    std::int64_t second = 0;
    text.Skip(mark);
    if (mark == ' ' || !text.TakeNumber(1, 2, second) || !text.Skip(mark) || !text.TakeNumber(4, 4, date.year)) {
        return false;
    }
    dependsOnOrder = mark != '.';
    const bool isDayFirst = mark == '.' || order == DateOrder::kDayFirst;
    date.day = isDayFirst ? first : second;
    date.month = isDayFirst ? second : first;
    return true;
}

// AM or PM, blanks before it.
bool TakeHalfOfDay(Scanner& text, std::int64_t& hour) {
    Scanner ahead = text;
    ahead.SkipBlanks();
    const std::string_view word = ahead.TakeLetters();
    const bool isMorning = IsSame(word, "am");
    if (!isMorning && !IsSame(word, "pm")) return true;
    text = ahead;
    if (hour < 1 || hour > 12) return false;
    hour = hour % 12 + (isMorning ? 0 : 12);
    return true;
}

TimeState TakeTimeOfDay(Scanner& text, Moment& time) {
    std::int64_t hour = 0;
    std::int64_t minute = 0;
    std::int64_t second = 0;
    TimeState state = TimeState::kRead;
    const std::size_t digits = text.CountDigits();
    if (digits == 4 || digits == 6) {  // without colons
        hour = text.Take(2);
        minute = text.Take(2);
        if (digits == 6) second = text.Take(2);
    } else {
        if (!text.TakeNumber(1, 2, hour)) return TimeState::kNone;
        if (text.Skip(':')) {
            if (!text.TakeNumber(2, 2, minute)) return TimeState::kNone;
            if (text.Skip(':') && !text.TakeNumber(2, 2, second)) return TimeState::kNone;
        }
    }
    time.nanoseconds = 0;
    if (text.Skip('.') || text.Skip(',')) state = TakeDecimals(text, time.nanoseconds);
    if (!TakeHalfOfDay(text, hour)) return TimeState::kNone;
    time.seconds = (hour * 60 + minute) * 60 + second;
    const bool isMidnight = time.seconds == kSecondsOfDay && time.nanoseconds == 0 && hour == 24;
    return (hour < 24 || isMidnight) && minute < 60 && second <= 60 ? state : TimeState::kNone;
}

// Z, UTC, GMT, +02:00; nothing is UTC. Seconds east of Greenwich.
bool TakeZone(Scanner& text, std::int64_t& offset) {
    offset = 0;
    text.SkipBlanks();
    if (text.IsAtEnd()) return true;
    const std::string_view word = text.TakeLetters();
    if (!word.empty() && !IsSame(word, "z") && !IsSame(word, "utc") && !IsSame(word, "gmt")) return false;
    if (text.IsAtEnd()) return true;
    if (IsSame(word, "z")) return false;
    const bool isWest = text.Skip('-');
    if (!isWest && !text.Skip('+')) return false;
    std::int64_t hours = 0;
    std::int64_t minutes = 0;
    if (text.CountDigits() == 4) {
        hours = text.Take(2);
        minutes = text.Take(2);
    } else if (!text.TakeNumber(1, 2, hours) || (text.Skip(':') && !text.TakeNumber(2, 2, minutes))) {
        return false;
    }
    offset = (hours * 60 + minutes) * (isWest ? -60 : 60);
    return hours < 24 && minutes < 60 && text.IsAtEnd();
}

}  // namespace

bool IsInYears(std::int64_t seconds) { return seconds >= kFirstSecond && seconds <= kLastSecond; }

TimeState ReadCalendarTime(std::string_view cell, DateOrder order, CalendarTime& time) {
    Scanner text(Trimmed(cell));
    Date date;
    time = {};
    if (!TakeDate(text, order, date, time.dependsOnOrder)) return TimeState::kNone;
    std::int64_t days = 0;
    if (!ZT_PLUGIN::DayNumber(date.year, date.month, date.day, days)) return TimeState::kNone;
    time.moment = {days * kSecondsOfDay, 0};
    if (text.IsAtEnd()) return TimeState::kRead;
    const bool isParted = text.Skip('T') || text.Skip('t') || text.Skip(',') || text.Skip('_');
    if (!text.SkipBlanks() && !isParted && text.CountDigits() != 6) return TimeState::kNone;  // 20260601083005
    Moment ofDay;
    std::int64_t offset = 0;
    const TimeState state = TakeTimeOfDay(text, ofDay);
    if (state == TimeState::kNone || !TakeZone(text, offset)) return TimeState::kNone;
    time.hasTimeOfDay = true;
    time.moment.seconds += ofDay.seconds - offset;
    time.moment.nanoseconds = ofDay.nanoseconds;
    return IsInYears(time.moment.seconds) ? state : TimeState::kNone;
}

TimeState ReadTimeOfDay(std::string_view cell, Moment& time) {
    constexpr std::size_t kMostHourDigits = 4;
    Scanner text(Trimmed(cell));
    std::int64_t numbers[3] = {};
    std::size_t count = 1;
    if (!text.TakeNumber(1, kMostHourDigits, numbers[0])) return TimeState::kNone;
    for (; count < 3 && text.Skip(':'); ++count) {
        if (!text.TakeNumber(2, 2, numbers[count])) return TimeState::kNone;
    }
    if (count == 1) return TimeState::kNone;
    TimeState state = TimeState::kRead;
    time.nanoseconds = 0;
    if (text.Skip('.') || text.Skip(',')) {
        state = TakeDecimals(text, time.nanoseconds);
        if (count == 2) {  // minutes and seconds
            numbers[2] = numbers[1];
            numbers[1] = numbers[0];
            numbers[0] = 0;
        }
    }
    const bool isOfDay = numbers[0] < 24 || count == 3;
    if (!TakeHalfOfDay(text, numbers[0]) || !text.IsAtEnd() || !isOfDay) return TimeState::kNone;
    if (numbers[1] > 59 || numbers[2] > 60) return TimeState::kNone;
    time.seconds = (numbers[0] * 60 + numbers[1]) * 60 + numbers[2];
    return state;
}

// By the digits alone: the point moves to where seconds end.
TimeState ReadNumberTime(std::string_view cell, Decimal decimal, int unit, Moment& time) {
    constexpr std::ptrdiff_t kMostIntegers = 12;  // of seconds
    std::string room;
    std::string_view digits = cell;
    const bool isPlain = decimal == Decimal::kPoint && IsPlainNumber(cell);
    if (!isPlain && !ReadNumber(cell, decimal, room, digits)) return TimeState::kNone;
    const bool isNegative = digits.front() == '-';
    if (isNegative) digits.remove_prefix(1);
    const std::size_t mark = isPlain ? digits.size() : std::min(digits.find_first_of("eE"), digits.size());
    long exponent = 0;
    if (mark != digits.size()) {
        constexpr long kMost = 10000;  // what is beyond has no digit but zeros
        exponent = std::strtol(std::string(digits.substr(mark + 1)).c_str(), nullptr, 10);
        exponent = std::clamp(exponent, -kMost, kMost);
    }
    const std::string_view mantissa = digits.substr(0, mark);
    const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
    // Digits before this place are whole seconds.
    std::ptrdiff_t place = static_cast<std::ptrdiff_t>(point) - unit + exponent;
    time = {};
    TimeState state = TimeState::kRead;
    std::int32_t scale = 100'000'000;  // of the next decimal
    for (; place < 0 && scale != 0; ++place) scale /= 10;
    if (place < 0) place = 0;
    std::ptrdiff_t integers = 0;  // without zeros in front
    for (std::size_t k = 0; k < mantissa.size(); ++k) {
        if (k == point) continue;
        const int digit = mantissa[k] - '0';
        if (place > 0) {
            --place;
            if (integers != 0 || digit != 0) ++integers;
            if (integers > kMostIntegers) return TimeState::kNone;
            time.seconds = time.seconds * 10 + digit;
        } else if (scale != 0) {
            time.nanoseconds += digit * scale;
            scale /= 10;
        } else if (digit != 0) {
            state = TimeState::kTooFine;
        }
    }
    if (time.seconds != 0 && integers + place > kMostIntegers) return TimeState::kNone;
    for (; place > 0 && time.seconds != 0; --place) time.seconds *= 10;
    if (isNegative) {
        time.seconds = -time.seconds - (time.nanoseconds != 0 ? 1 : 0);
        if (time.nanoseconds != 0) time.nanoseconds = 1'000'000'000 - time.nanoseconds;
    }
    return IsInYears(time.seconds) ? state : TimeState::kNone;
}

bool IsCompactDate(std::string_view cell) {
    const std::string_view text = Trimmed(cell);
    if (text.size() != 8 && text.size() != 14) return false;
    for (const char c : text) {
        if (!IsDigit(c)) return false;
    }
    CalendarTime time;
    return ReadCalendarTime(text, DateOrder::kDayFirst, time) == TimeState::kRead;
}

}  // namespace series
