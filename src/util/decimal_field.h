// Decimal numbers of a fixed number of digits, as times have them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "util/number_text.h"

namespace zentor {

// Writes the last `digits` digits of a number, with zeros in front; returns the end.
inline char* PutDecimal(char* out, std::uint64_t number, std::size_t digits) {
    for (std::size_t at = digits; at-- > 0; number /= 10) out[at] = static_cast<char>('0' + number % 10);
    return out + digits;
}

// False unless the text is all digits. At most 9 of them.
inline bool TakeDecimal(std::string_view text, std::uint32_t& number) {
    number = 0;
    for (const char c : text) {
        if (!IsDigit(c)) return false;
        number = number * 10 + static_cast<std::uint32_t>(c - '0');
    }
    return true;
}

}  // namespace zentor
