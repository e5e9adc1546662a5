#include "util/json_cursor.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <limits>

#include "util/utf_codec.h"

namespace zentor {

namespace {

constexpr int kDigitsOfLargestDouble = 309;
constexpr std::size_t kExactDigits = 15;

const char* Find(const char* from, const char* end, char c) {
    return static_cast<const char*>(std::memchr(from, c, static_cast<std::size_t>(end - from)));
}

// Whole numbers with few digits are most of a document.
bool ReadShortInteger(const char* from, const char* end, double& value) {
    const char* const digits = *from == '-' ? from + 1 : from;
    if (static_cast<std::size_t>(end - digits) > kExactDigits) return false;
    std::int64_t number = 0;
    for (const char* digit = digits; digit != end; ++digit) number = number * 10 + (*digit - '0');
    value = digits == from ? static_cast<double>(number) : -static_cast<double>(number);
    return true;
}

// The decimal exponent of the first digit that is not 0, for a number whose text is valid; the lowest number for 0.
std::int64_t LeadingExponent(std::string_view integer, std::string_view fraction, std::int64_t exponent) {
    const std::size_t inInteger = integer.find_first_not_of('0');
    if (inInteger != std::string_view::npos)
        return static_cast<std::int64_t>(integer.size() - inInteger) - 1 + exponent;
    const std::size_t inFraction = fraction.find_first_not_of('0');
    if (inFraction != std::string_view::npos) return exponent - static_cast<std::int64_t>(inFraction) - 1;
    return std::numeric_limits<std::int64_t>::min();
}

// An exponent beyond any double, but far from the ends of 64 bits.
constexpr std::int64_t kHugeExponent = std::int64_t{1} << 60;

std::int64_t ReadExponent(std::string_view text) {
    const bool negative = text.front() == '-';
    if (negative || text.front() == '+') text.remove_prefix(1);
    std::int64_t exponent = 0;
    const bool fits = std::from_chars(text.data(), text.data() + text.size(), exponent).ec == std::errc();
    exponent = fits ? std::min(exponent, kHugeExponent) : kHugeExponent;
    return negative ? -exponent : exponent;
}

bool IsTooBig(std::string_view integer) {
    if (integer.size() < static_cast<std::size_t>(kDigitsOfLargestDouble)) return false;
    double value = 0;
    return std::from_chars(integer.data(), integer.data() + integer.size(), value).ec != std::errc();
}

std::uint32_t HexDigit(char c) {
    if (IsDigit(c)) return static_cast<std::uint32_t>(c - '0');
    const char lower = static_cast<char>(c | 0x20);
    return lower >= 'a' && lower <= 'f' ? static_cast<std::uint32_t>(lower - 'a' + 10) : 16;
}

}  // namespace

bool ReadUnicodeEscape(std::string_view text, std::uint32_t& unit) {
    if (text.size() < 6 || text[0] != '\\' || text[1] != 'u') return false;
    unit = 0;
    for (const char c : text.substr(2, 4)) {
        const std::uint32_t digit = HexDigit(c);
        if (digit > 15) return false;
        unit = unit * 16 + digit;
    }
    return true;
}

namespace {

// Decodes the escape at the beginning of `text`; returns its length, 0 when it is none.
std::size_t DecodeUnicodeEscape(std::string_view text, std::string& decoded) {
    std::uint32_t unit = 0;
    if (!ReadUnicodeEscape(text, unit)) return 0;
    if (!IsHighSurrogate(unit) && !IsLowSurrogate(unit)) {
        AppendUtf8(decoded, unit);
        return 6;
    }
    std::uint32_t low = 0;
    if (!IsHighSurrogate(unit) || !ReadUnicodeEscape(text.substr(6), low) || !IsLowSurrogate(low)) return 0;
    AppendUtf8(decoded, CombineSurrogates(unit, low));
    return 12;
}

std::size_t DecodeEscape(std::string_view text, std::string& decoded) {
    if (text.size() < 2) return 0;
    if (text[1] == 'u') return DecodeUnicodeEscape(text, decoded);
    constexpr std::string_view kLetters = "\"\\/bfnrt";
    constexpr std::string_view kMeanings = "\"\\/\b\f\n\r\t";
    const std::size_t which = kLetters.find(text[1]);
    if (which == std::string_view::npos) return 0;
    decoded += kMeanings[which];
    return 2;
}

}  // namespace

std::string RawString::Decoded() const { return hasBackslash ? DecodeEscapes(text) : std::string(text); }

bool JsonCursor::TakeString(RawString& string) {
    if (next_ == end_ || *next_ != '"') return false;
    bool hasBackslash = false;
    const char* const begin = next_ + 1;
    const char* quote = nullptr;
    for (const char* at = begin;;) {
        if (quote == nullptr || quote < at) {  // not looked for again for each escape before it
            quote = at == end_ ? nullptr : Find(at, end_, '"');
            if (quote == nullptr) return false;
        }
        const char* const backslash = Find(at, quote, '\\');
        if (backslash == nullptr) break;
        hasBackslash = true;
        if (backslash + 1 == end_) return false;
        at = backslash + 2;
    }
    string = {{begin, static_cast<std::size_t>(quote - begin)}, hasBackslash};
    next_ = quote + 1;
    return true;
}

NumberStatus JsonCursor::TakeNumber(double& value) {
    const char* const from = next_;
    Skip('-');
    const char* const integerBegin = next_;
    if (!Skip('0')) SkipDigits();  // a number has no leading zeros
    const std::string_view integer(integerBegin, static_cast<std::size_t>(next_ - integerBegin));
    if (integer.empty()) return NumberStatus::kNoDigit;
    std::string_view fraction;
    if (Skip('.')) {
        const char* const begin = next_;
        SkipDigits();
        fraction = {begin, static_cast<std::size_t>(next_ - begin)};
        if (fraction.empty()) return NumberStatus::kNoFraction;
    }
    std::string_view exponent;
    if (Skip('e') || Skip('E')) {
        const char* const begin = next_;
        if (!Skip('-')) Skip('+');
        const char* const digits = next_;
        SkipDigits();
        if (next_ == digits) return NumberStatus::kNoExponent;
        exponent = {begin, static_cast<std::size_t>(next_ - begin)};
    }
    if (fraction.empty() && exponent.empty() && ReadShortInteger(from, next_, value)) return NumberStatus::kOk;
    if (IsTooBig(integer)) {
        next_ = from;
        return NumberStatus::kTooBig;
    }
    if (std::from_chars(from, next_, value).ec == std::errc()) return NumberStatus::kOk;
    // Out of range: beyond the largest double, or nearer to 0 than the smallest.
    if (LeadingExponent(integer, fraction, exponent.empty() ? 0 : ReadExponent(exponent)) > 0) {
        next_ = from;
        return NumberStatus::kOverflow;
    }
    value = *from == '-' ? -0.0 : 0.0;
    return NumberStatus::kOk;
}

void JsonCursor::SkipValue() {
    std::size_t depth = 0;
    do {
        RawString ignored;
        if (TakeString(ignored)) continue;
        if (AtEnd()) return;
        if (Peek() == '"') {  // of a string that does not end
            next_ = end_;
            return;
        }
        const char c = *next_++;
        if (c == '{' || c == '[') ++depth;
        if (c == '}' || c == ']') --depth;
        if (depth == 0 && c != '}' && c != ']') SkipScalar();
    } while (depth != 0);
}

std::string DecodeEscapes(std::string_view text) {
    std::string decoded;
    decoded.reserve(text.size());
    while (!text.empty()) {
        const std::size_t plain = std::min(text.find('\\'), text.size());
        decoded += text.substr(0, plain);
        text.remove_prefix(plain);
        if (text.empty()) break;
        const std::size_t taken = DecodeEscape(text, decoded);
        if (taken == 0) decoded += '\\';
        text.remove_prefix(std::max<std::size_t>(taken, 1));
    }
    return decoded;
}

}  // namespace zentor
