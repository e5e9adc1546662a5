// Numbers as the document format writes them, and as tables hold them. Locale-free.
#pragma once

#include <cstdint>
#include <string_view>

namespace zentor {

// The text of one number.
struct NumberText {
    char bytes[32];
    std::uint32_t length;

    std::string_view view() const { return {bytes, length}; }
};

// General notation with 16 significant digits; when the text has a ".", trailing zeros and then a trailing "." go. That
// takes the zeros of an exponent too (1.5e+20 is written 1.5e+2): the format is defined so. `value` is finite.
NumberText FormatNumber(double value);

struct DigitCounts {
    std::uint64_t integer;  // digits before the point
    std::uint64_t decimal;  // digits after it; an exponent does not count
    bool isNegative;
};

DigitCounts CountDigits(std::string_view number);

// Whether the 16-digit text of `value` is again a finite number; false for infinities and not-a-number.
bool IsWritable(double value);

// Reads a decimal number at the beginning of [from, end): an optional sign, digits with an optional point, an optional
// exponent. Returns the position after it, or null when there is none or its value is out of range (an overflow, or an
// underflow to zero). "inf", "nan" and hexadecimal digits are no numbers.
const char* ParseNumber(const char* from, const char* end, double& value);

}  // namespace zentor
