#include "util/number_text.h"

#include <charconv>
#include <cmath>
#include <cstring>
#include <system_error>

namespace zentor {

namespace {

constexpr int kSignificantDigits = 16;

// Doubles from here on round to 1.797693134862316e+308 at 16 digits, which is above the largest double.
constexpr double kUnwritable = 1.7976931348623155e308;

// Whole numbers below this have at most 16 digits, so that the general notation is their plain decimal text.
constexpr double kLargestPlainInteger = 9007199254740992.0;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

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

DigitCounts CountDigits(std::string_view number) {
    DigitCounts counts{0, 0, number.starts_with('-')};
    const std::string_view mantissa = number.substr(counts.isNegative ? 1 : 0, number.find('e') - counts.isNegative);
    const std::size_t point = mantissa.find('.');
    counts.integer = point == std::string_view::npos ? mantissa.size() : point;
    counts.decimal = point == std::string_view::npos ? 0 : mantissa.size() - point - 1;
    return counts;
}

bool IsWritable(double value) { return std::abs(value) < kUnwritable; }

const char* ParseNumber(const char* from, const char* end, double& value) {
    const char* first = from;
    if (first != end && *first == '+') ++first;  // from_chars takes no plus sign
    const char* digits = first != end && *first == '-' && first == from ? first + 1 : first;
    if (digits == end || !(IsDigit(*digits) || *digits == '.')) return nullptr;
    const auto [stop, error] = std::from_chars(first, end, value);
    return error == std::errc() ? stop : nullptr;
}

}  // namespace zentor
