#include "number_cell.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "words.h"

namespace series {

namespace {

struct Parts {
    std::size_t sign = 0;        // its bytes
    std::size_t integers = 0;    // digits before the decimals, without marks between groups
    std::size_t firstGroup = 0;  // digits before the first mark between groups, 0 when there is none
    bool hasGroups = false;
    bool hasDecimals = false;
    std::size_t exponent = 0;  // bytes
};

// A whole number with an exponent and the like may be beyond a double; so few digits cannot.
constexpr std::size_t kSafeLength = 300;

// Takes a number apart; false for what is none.
bool TakeApart(std::string_view text, char point, Parts& parts) {
    std::size_t at = 0;
    const auto digits = [&] {
        const std::size_t begin = at;
        while (at != text.size() && IsDigit(text[at])) ++at;
        return at - begin;
    };
    if (at != text.size() && (text[at] == '-' || text[at] == '+')) ++at;
    parts.sign = at;
    parts.integers = digits();
    const char group = point == '.' ? ',' : '.';
    if (at != text.size() && text[at] == group) {
        parts.firstGroup = parts.integers;
        parts.hasGroups = true;
        if (parts.integers == 0 || parts.integers > 3 || text[parts.sign] == '0') return false;
        while (at != text.size() && text[at] == group) {
            ++at;
            if (digits() != 3) return false;
            parts.integers += 3;
        }
    }
    std::size_t decimals = 0;
    if (at != text.size() && text[at] == point) {
        ++at;
        parts.hasDecimals = true;
        decimals = digits();
    }
    if (parts.integers + decimals == 0) return false;
    if (at != text.size() && (text[at] == 'e' || text[at] == 'E')) {
        const std::size_t begin = at++;
        if (at != text.size() && (text[at] == '-' || text[at] == '+')) ++at;
        if (digits() == 0) return false;
        parts.exponent = at - begin;
    }
    return at == text.size();
}

bool IsFinite(std::string_view digits) {
    double value = 0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    constexpr double kUnwritable = 1.7976931348623155e308;  // 16 digits of it are beyond the largest double
    return result.ec == std::errc() && result.ptr == digits.data() + digits.size() && std::abs(value) < kUnwritable;
}

}  // namespace

bool IsPlainNumber(std::string_view text) {
    const char* at = text.data();
    const char* const end = at + text.size();
    if (at != end && *at == '-') ++at;
    const char* const integers = at;
    while (at != end && IsDigit(*at)) ++at;
    if (at == integers || text.size() >= kSafeLength) return false;
    if (at == end) return true;
    const char* const decimals = at + 1;
    if (*at++ != '.') return false;
    while (at != end && IsDigit(*at)) ++at;
    return at == end && at != decimals;
}

bool ReadNumber(std::string_view cell, Decimal decimal, std::string& room, std::string_view& digits) {
    if (decimal == Decimal::kPoint && IsPlainNumber(cell)) {
        digits = cell;
        return true;
    }
    const std::string_view text = Trimmed(cell);
    if (text.empty() || text.front() > '9') return false;
    Parts parts;
    if (!TakeApart(text, static_cast<char>(decimal), parts)) return false;
    digits = text;
    if (parts.sign != 0 && text.front() == '+') digits.remove_prefix(1);
    const bool isPlain = !parts.hasGroups && (decimal == Decimal::kPoint || !parts.hasDecimals);
    if (!isPlain) {
        room.assign(digits);
        const char group = decimal == Decimal::kPoint ? ',' : '.';
        room.erase(std::remove(room.begin(), room.end(), group), room.end());
        std::replace(room.begin(), room.end(), ',', '.');
        digits = room;
    }
    return (parts.exponent == 0 && digits.size() < kSafeLength) || IsFinite(digits);
}

NumberSign SignOf(std::string_view cell) {
    const std::string_view text = Trimmed(cell);
    Parts point;
    Parts comma;
    const bool isPoint = TakeApart(text, '.', point);
    const bool isComma = TakeApart(text, ',', comma);
    if (isPoint && !isComma) return NumberSign::kPoint;
    if (isComma && !isPoint) return NumberSign::kComma;
    if (!isPoint || (!point.hasGroups && !comma.hasGroups)) return NumberSign::kNone;
    return point.hasGroups ? NumberSign::kGroupOrComma : NumberSign::kPoint;
}

bool IsMarker(std::string_view cell) {
    constexpr std::string_view kMarkers[] = {
        "nan", "na", "n/a", "#n/a", "#na",  "nat",  "null", "none",   "nil",      "-nan",      "-",       "--",
        "---", "?",  ".",   "inf",  "-inf", "+inf", "#nv",  "(null)", "infinity", "-infinity", "#div/0!", "#value!"};
    const std::string_view text = Trimmed(cell);
    if (text.empty() || text.size() > 9) return false;
    return std::any_of(std::begin(kMarkers), std::end(kMarkers),
                       [text](std::string_view marker) { return IsSame(text, marker); });
}

}  // namespace series
