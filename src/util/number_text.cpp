#include "util/number_text.h"

#include <bit>
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

// Null for what is no whole number, or too large a one.
char* FormatWhole(double value, NumberText& text) {
    const bool isWhole = std::trunc(value) == value && std::abs(value) < kLargestPlainInteger;
    if (!isWhole || (value == 0 && std::signbit(value))) return nullptr;
    return std::to_chars(text.bytes, std::end(text.bytes), static_cast<std::int64_t>(value)).ptr;
}

}  // namespace

NumberText FormatNumber(double value) {
    NumberText text;
    char* end = FormatWhole(value, text);
    if (end == nullptr) {
        end =
            std::to_chars(text.bytes, std::end(text.bytes), value, std::chars_format::general, kSignificantDigits).ptr;
        end = StripTrailingZeros(text.bytes, end);
    }
    text.length = static_cast<std::uint32_t>(end - text.bytes);
    return text;
}

NumberText FormatShortest(double value) {
    constexpr double kSmallestPlain = 1e-4;
    constexpr double kBeyondPlain = 1e16;
    NumberText text;
    char* end = FormatWhole(value, text);
    if (end == nullptr) {
        const double magnitude = std::abs(value);
        const bool isPlain = value == 0 || (magnitude >= kSmallestPlain && magnitude < kBeyondPlain);
        const std::chars_format format = isPlain ? std::chars_format::fixed : std::chars_format::scientific;
        end = std::to_chars(text.bytes, std::end(text.bytes), value, format).ptr;
    }
    text.length = static_cast<std::uint32_t>(end - text.bytes);
    return text;
}

char* FormatPlainShortest(double value, char* out) {
    return std::to_chars(out, out + kPlainNumberRoom, value, std::chars_format::fixed).ptr;
}

namespace {

char* FormatSmallNumber(double value, char* out) {
    constexpr int kMostDecimals = 17;
    char* const end = std::to_chars(out, out + kPlainNumberRoom, value, std::chars_format::fixed, kMostDecimals).ptr;
    return StripTrailingZeros(out, end);
}

// One digit, the point, 15 digits, "e+" and the exponent: the digits move over the point, and zeros follow.
char* FormatLargeNumber(double value, char* out) {
    const char* const textEnd =
        std::to_chars(out, out + kPlainNumberRoom, value, std::chars_format::scientific, kSignificantDigits - 1).ptr;
    char* const point = static_cast<char*>(std::memchr(out, '.', static_cast<std::size_t>(textEnd - out)));
    char* const digitsEnd = point + kSignificantDigits;
    int exponent = 0;
    std::from_chars(digitsEnd + 2, textEnd, exponent);
    std::memmove(point, point + 1, kSignificantDigits - 1);
    char* const end = point + exponent;
    std::memset(digitsEnd - 1, '0', static_cast<std::size_t>(end - (digitsEnd - 1)));
    return end;
}

}  // namespace

char* FormatPlainNumber(double& value, char* out) {
    const NumberText text = FormatNumber(value);
    if (text.view().find('e') == std::string_view::npos) {
        std::memcpy(out, text.bytes, text.length);
        return out + text.length;
    }
    char* const end = std::abs(value) < 1 ? FormatSmallNumber(value, out) : FormatLargeNumber(value, out);
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

constexpr std::uint64_t kWholePowersOfTen[] = {1, 10, 100, 1000, 10000, 100000, 1000000, 10000000, 100000000};

static_assert(std::size(PlainDecimal::kPowersOfTen) == kExactDigits - kSmallestExponent + 1);

}  // namespace

namespace {

// Appends the digits at `at` to a number, eight at a time as far as the bytes go. Returns where they end; a number of
// more than 19 digits is lost.
inline const char* TakeDigits(const char* at, const char* end, std::uint64_t& number) {
    if constexpr (std::endian::native == std::endian::little) {
        while (end - at >= 8) {
            std::uint64_t eight = 0;
            std::memcpy(&eight, at, 8);
            // The top bit of each byte that is no digit, up to the first one; what is above it means nothing.
            const std::uint64_t others =
                ((eight + 0x4646464646464646) | (eight - 0x3030303030303030)) & 0x8080808080808080;
            const int count = others == 0 ? 8 : std::countr_zero(others) / 8;
            if (count == 0) return at;
            eight = (eight & 0x0F0F0F0F0F0F0F0F) << (8 * (8 - count));  // zeros in front
            eight = eight * 10 + (eight >> 8);                          // of two digits each
            const std::uint64_t odd = (eight & 0x000000FF000000FF) * 0x000F424000000064;
            const std::uint64_t even = (eight >> 16 & 0x000000FF000000FF) * 0x0000271000000001;
            number = number * kWholePowersOfTen[count] + ((odd + even) >> 32);
            at += count;
            if (count < 8) return at;
        }
    }
    for (; at != end && IsDigit(*at); ++at) number = number * 10 + static_cast<std::uint64_t>(*at - '0');
    return at;
}

// A number as the sum of two with half as many bits each, whose products are exact.
struct Halves {
    explicit Halves(double number) {
        constexpr double kSplit = 0x1p27 + 1;
        const double shifted = number * kSplit;
        high = shifted - (shifted - number);
        low = number - high;
    }
    double high;
    double low;
};

// Whether the double nearest to digits / 10^decimals is so near that it has the same 16 digits: nearer than half a unit
// of the 16th.
bool KeepsDigits(double digits, std::ptrdiff_t decimals, std::ptrdiff_t significant) {
    const double scale = PlainDecimal::kPowersOfTen[decimals];
    const double nearest = digits / scale;
    // How far nearest * scale is from the digits, without an error of rounding.
    const Halves a(nearest);
    const Halves b(scale);
    const double product = nearest * scale;
    const double rest = ((a.high * b.high - product) + a.high * b.low + a.low * b.high) + a.low * b.low;
    const double distance = std::abs((product - digits) + rest);
    constexpr double kNearlyHalf = 0.4999999;
    return distance < kNearlyHalf / PlainDecimal::kPowersOfTen[16 - significant];
}

}  // namespace

PlainDecimal ScanPlainDecimal(const char* from, const char* end, NumberForm form) {
    constexpr PlainDecimal unknown{nullptr, nullptr, 0, 0, 0};
    constexpr std::ptrdiff_t kMostDigits = 19;  // of any 64-bit number
    const char* at = from;
    if (at != end && *at == '-') ++at;
    const char* const start = at;
    std::uint64_t digits = 0;  // all digits as one whole number
    at = TakeDigits(start, end, digits);
    const std::ptrdiff_t integers = at - start;
    if (integers == 0 || (*start == '0' && integers > 1)) return unknown;
    const char* last = at;  // after the last digit that is written
    std::ptrdiff_t decimals = 0;
    std::ptrdiff_t leadingZeros = *start == '0' ? 1 : 0;
    if (at != end && *at == '.') {
        const char* const point = at;
        at = TakeDigits(point + 1, end, digits);
        decimals = at - point - 1;
        last = at;
        while (last[-1] == '0') --last;
        if (last == point + 1) last = point;
        if (leadingZeros != 0) {
            for (const char* zero = point + 1; zero != at && *zero == '0'; ++zero) ++leadingZeros;
        }
    }
    if (integers + decimals > kMostDigits || (at != end && (*at == 'e' || *at == 'E'))) return unknown;
    if (digits != 0) {
        const std::ptrdiff_t significant = integers + decimals - leadingZeros;
        const std::ptrdiff_t exponent = significant - decimals - 1;
        if (significant > kExactDigits || exponent < kSmallestExponent) return unknown;
        const double limit = kCoarseFrom[exponent - kSmallestExponent] * PlainDecimal::kPowersOfTen[decimals];  // exact
        const auto whole = static_cast<double>(digits);  // a double itself, of so few digits
        const bool isCoarse = form == NumberForm::kSixteenDigits && decimals != 0 && whole >= limit;
        if (isCoarse && !KeepsDigits(whole, decimals, significant)) return unknown;
    }
    const auto number = static_cast<std::int64_t>(digits);
    return {last, at, *from == '-' ? -number : number, static_cast<std::uint32_t>(decimals),
            static_cast<std::uint32_t>(integers)};
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
