// Numbers as the document format writes them, and as tables hold them. Locale-free.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace zentor {

constexpr bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// The text of one number. The unused bytes may be copied along, but mean nothing.
struct NumberText {
    static constexpr std::size_t kRoom = 32;

    char bytes[kRoom];
    std::uint32_t length = 0;

    std::string_view view() const { return {bytes, length}; }
};

// How many digits of a number are written.
enum class NumberForm : std::uint8_t {
    kSixteenDigits,  // what documents have unless they are faithful
    kShortest,       // as few as give the same double
};

// General notation with 16 significant digits; when the text has a ".", trailing zeros and then a trailing "." go. That
// takes the zeros of an exponent too (1.5e+20 is written 1.5e+2): the format is defined so. `value` is finite.
NumberText FormatNumber(double value);

// The fewest digits that give the same double, in the same notation: with an exponent below 1e-4 and from 1e16 on,
// whose zeros stay. `value` is finite.
NumberText FormatShortest(double value);

inline NumberText FormatNumber(double value, NumberForm form) {
    return form == NumberForm::kShortest ? FormatShortest(value) : FormatNumber(value);
}

// The room that FormatPlainNumber needs.
inline constexpr std::size_t kPlainNumberRoom = 352;

// The same number without an exponent: from 1e16 on the 16 digits with zeros after them, below 1e-4 rounded to at most
// 17 decimals, sign kept; in these two cases `value` is set to the number that the text says. Returns its end.
char* FormatPlainNumber(double& value, char* out);

// The fewest digits that give the same double, without an exponent. Returns their end; kPlainNumberRoom is enough.
char* FormatPlainShortest(double value, char* out);

struct DigitCounts {
    std::uint64_t integer;  // digits before the point
    std::uint64_t decimal;  // digits after it; an exponent does not count
    bool isNegative;
};

inline DigitCounts CountDigits(std::string_view number) {
    const bool isNegative = number.starts_with('-');
    const std::size_t first = isNegative ? 1 : 0;
    std::size_t point = first;
    while (point < number.size() && number[point] != '.' && number[point] != 'e') ++point;
    std::size_t end = point;
    while (end < number.size() && number[end] != 'e') ++end;
    return {point - first, end == point ? 0 : end - point - 1, isNegative};
}

// Whether the 16-digit text of `value` is again a finite number; false for infinities and not-a-number.
inline bool IsWritable(double value) {
    constexpr double kUnwritable =
        1.7976931348623155e308;  // rounds to 1.797693134862316e+308, above the largest double
    return std::abs(value) < kUnwritable;
}
// The same of the text in either form: every finite number has a shortest one.
inline bool IsWritable(double value, NumberForm form) {
    return form == NumberForm::kShortest ? std::isfinite(value) : IsWritable(value);
}

// A number as it stands in a text. Both are null when it has to be parsed and formatted.
struct PlainDecimal {
    const char* canonicalEnd;  // up to here the text is what FormatNumber would give in this form
    const char* end;           // where the number ends, zeros and all
    std::int64_t digits;       // the number without its point
    std::uint32_t decimals;    // how many of the digits are after it
    std::uint32_t integers;    // and before it

    // Both are exact as doubles, so that the quotient is the nearest double to the number.
    double Value() const { return static_cast<double>(digits) / kPowersOfTen[decimals]; }

    static constexpr double kPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,
                                              1e10, 1e11, 1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19};
};

// Looks at the number at the beginning of [from, end) without parsing it. A decimal number of at most 15 significant
// digits without an exponent keeps its digits through double and back to the shortest form; and to 16 digits, but for
// some that have decimals and lie in the upper part of their decade, where doubles stand farther apart than numbers of
// 16 digits.
PlainDecimal ScanPlainDecimal(const char* from, const char* end, NumberForm form);

// Reads a decimal number at the beginning of [from, end): an optional sign, digits with an optional point, an optional
// exponent. Returns the position after it, or null when there is none or its value is out of range (an overflow, or an
// underflow to zero). "inf", "nan" and hexadecimal digits are no numbers.
const char* ParseNumber(const char* from, const char* end, double& value);

}  // namespace zentor
