#include "util/number_text.h"

#include <charconv>
#include <cmath>
#include <cstring>
#include <iterator>
#include <system_error>

namespace zentor {

namespace {

constexpr int kSignificantDigits = 16;

// Whole numbers below this have at most 16 digits, so that the general notation is their plain decimal text.
constexpr double kLargestPlainInteger = 9007199254740992.0;

char* StripTrailingZeros(char* begin, char* end) {
    const auto* point = static_cast<char*>(std::memchr(begin, '.', static_cast<std::size_t>(end - begin)));
    if (point == nullptr) return end;
    while (end[-1] == '0') --end;
    return end - 1 == point ? end - 1 : end;
}

}  // namespace

NumberText FormatNumber(double value) {
    NumberText text;
    char* end = text.bytes;
    const double whole = std::trunc(value);
    if (whole == value && std::abs(value) < kLargestPlainInteger && !(value == 0 && std::signbit(value))) {
        end = std::to_chars(text.bytes, std::end(text.bytes), static_cast<std::int64_t>(value)).ptr;
    } else {
        end =
            std::to_chars(text.bytes, std::end(text.bytes), value, std::chars_format::general, kSignificantDigits).ptr;
        end = StripTrailingZeros(text.bytes, end);
    }
    text.length = static_cast<std::uint32_t>(end - text.bytes);
    return text;
}

char* FormatPlainNumber(double& value, char* out) {
    constexpr int kMostDecimals = 17;
    const NumberText text = FormatNumber(value);
    if (text.view().find('e') == std::string_view::npos) {
        std::memcpy(out, text.bytes, text.length);
        return out + text.length;
    }
    char* const room = out + kPlainNumberRoom;
    char* end = nullptr;
    if (std::abs(value) < 1) {
        end = std::to_chars(out, room, value, std::chars_format::fixed, kMostDecimals).ptr;
        end = StripTrailingZeros(out, end);
    } else {
        // One digit, the point, 15 digits, "e+" and the exponent: the digits move over the point, and zeros follow.
        end = std::to_chars(out, room, value, std::chars_format::scientific, kSignificantDigits - 1).ptr;
        char* const point = static_cast<char*>(std::memchr(out, '.', static_cast<std::size_t>(end - out)));
        char* const digitsEnd = point + kSignificantDigits;
        int exponent = 0;
        std::from_chars(digitsEnd + 2, end, exponent);
        std::memmove(point, point + 1, kSignificantDigits - 1);
        end = point + exponent;
        std::memset(digitsEnd - 1, '0', static_cast<std::size_t>(end - (digitsEnd - 1)));
    }
    std::from_chars(out, end, value);
    return end;
}

namespace {

constexpr int kExactDigits = 15;  // every decimal of so many digits survives the way through double
constexpr int kSmallestExponent = -4;
constexpr int kLargestExponent = kExactDigits - 1;

// For numbers with k + kSmallestExponent as decimal exponent: the first power of two from which on neighbouring doubles
// are farther apart than one unit of the 16th digit. Below it, half the distance of doubles is less than half a unit,
// so that rounding to 16 digits gives the decimal back.
constexpr double kCoarseFrom[] = {
    0x1p-11, 0x1p-7, 0x1p-4, 0x1p-1, 0x1p3,  0x1p6,  0x1p9,  0x1p13, 0x1p16, 0x1p19,
    0x1p23,  0x1p26, 0x1p29, 0x1p33, 0x1p36, 0x1p39, 0x1p43, 0x1p46, 0x1p49,
};
static_assert(std::size(kCoarseFrom) == kLargestExponent - kSmallestExponent + 1);

constexpr double kPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,
                                   1e10, 1e11, 1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19};
static_assert(std::size(kPowersOfTen) == kExactDigits - kSmallestExponent + 1);

}  // namespace

// Both are exact as doubles, so that the quotient is the nearest double to the number.
double PlainDecimal::Value() const { return static_cast<double>(digits) / kPowersOfTen[decimals]; }

PlainDecimal ScanPlainDecimal(const char* from, const char* end) {
    constexpr PlainDecimal unknown{nullptr, nullptr, 0, 0};
    const char* at = from;
    if (at != end && *at == '-') ++at;
    const char* const start = at;
    std::uint64_t digits = 0;  // all digits as one whole number
    int significant = 0;
    const auto takeDigit = [&] {
        digits = digits * 10 + static_cast<std::uint64_t>(*at++ - '0');
        significant += digits != 0 ? 1 : 0;
    };
    while (at != end && IsDigit(*at) && significant <= kExactDigits) takeDigit();
    if (at == start || (*start == '0' && at - start > 1)) return unknown;
    const char* last = at;  // after the last digit that is written
    int fraction = 0;
    if (at != end && *at == '.') {
        ++at;
        const char* const point = at;
        while (at != end && IsDigit(*at) && significant <= kExactDigits && at - point <= kExactDigits) {
            takeDigit();
            if (at[-1] != '0') last = at;
        }
        fraction = static_cast<int>(at - point);
    }
    if (significant > kExactDigits || (at != end && (IsDigit(*at) || *at == 'e' || *at == 'E'))) return unknown;
    if (significant != 0) {
        const int exponent = significant - fraction - 1;
        if (exponent < kSmallestExponent) return unknown;
        const double limit = kCoarseFrom[exponent - kSmallestExponent] * kPowersOfTen[fraction];  // exact
        if (static_cast<double>(digits) >= limit) return unknown;
    }
    const auto number = static_cast<std::int64_t>(digits);
    return {last, at, *from == '-' ? -number : number, static_cast<std::uint32_t>(fraction)};
}

const char* ParseNumber(const char* from, const char* end, double& value) {
    const char* first = from;
    if (first != end && *first == '+') ++first;  // from_chars takes no plus sign
    const char* digits = first != end && *first == '-' && first == from ? first + 1 : first;
    if (digits == end || !(IsDigit(*digits) || *digits == '.')) return nullptr;
    const auto [stop, error] = std::from_chars(first, end, value);
    return error == std::errc() ? stop : nullptr;
}

}  // namespace zentor
