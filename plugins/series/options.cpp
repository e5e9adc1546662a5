#include "options.h"

#include <charconv>
#include <string_view>

#include "refusal.h"
#include "row_reader.h"
#include "words.h"

namespace series {

namespace {

template <class Value>
struct Named {
    std::string_view name;
    Value value;
};

// The value that a text names, in any letter case.
template <class Value, std::size_t kCount>
std::optional<Value> Find(std::string_view text, const Named<Value> (&values)[kCount]) {
    for (const Named<Value>& named : values) {
        if (IsSame(text, named.name)) return named.value;
    }
    return std::nullopt;
}

[[noreturn]] void RefuseValue(const char* key, const std::string& value, const char* allowed) {
    throw Refusal(std::string("the parameter ") + key + " is \"" + value + "\"; it can be " + allowed);
}

template <class Value, std::size_t kCount>
void Read(const ZT_PLUGIN::Conversion& conversion, const char* key, const Named<Value> (&values)[kCount],
          const char* allowed, std::optional<Value>& option) {
    const char* const text = conversion.Parameter(key);
    if (text == nullptr) return;
    option = Find(std::string_view(text), values);
    if (!option) RefuseValue(key, text, allowed);
}

// A whole number at the beginning of a text, which goes past it.
bool TakeWhole(std::string_view& text, std::int64_t& number) {
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    if (result.ec != std::errc() || text.front() == '-') return false;
    text.remove_prefix(static_cast<std::size_t>(result.ptr - text.data()));
    return true;
}

// 100, 29.97, 30000/1001
bool ReadRate(std::string_view text, Rate& rate) {
    constexpr std::int64_t kMost = 1'000'000'000;
    constexpr std::size_t kMostDecimals = 9;
    rate = {0, 1};
    if (!TakeWhole(text, rate.rows) || rate.rows > kMost) return false;
    if (!text.empty() && text.front() == '/') {
        text.remove_prefix(1);
        if (text.empty() || !TakeWhole(text, rate.seconds)) return false;
    } else if (!text.empty() && text.front() == '.') {
        text.remove_prefix(1);
        if (text.empty() || text.size() > kMostDecimals) return false;
        for (; !text.empty() && IsDigit(text.front()); text.remove_prefix(1)) {
            rate.rows = rate.rows * 10 + (text.front() - '0');
            rate.seconds *= 10;
        }
    }
    return text.empty() && rate.rows > 0 && rate.seconds > 0 && rate.seconds <= kMost;
}

std::optional<char> ReadDelimiter(const ZT_PLUGIN::Conversion& conversion) {
    constexpr Named<char> kNames[] = {{"comma", ','},     {"semicolon", ';'}, {"tab", '\t'}, {"blank", kBlanks},
                                      {"space", kBlanks}, {"pipe", '|'},      {"\\t", '\t'}};
    const char* const text = conversion.Parameter("delimiter");
    if (text == nullptr) return std::nullopt;
    const std::string_view value(text);
    if (const auto delimiter = Find(value, kNames)) return delimiter;
    const bool isUsable = value.size() == 1 && value[0] != '"' && value[0] != '\r' && value[0] != '\n' &&
                          static_cast<unsigned char>(value[0]) < 0x80;
    if (!isUsable) RefuseValue("delimiter", text, "comma, semicolon, tab, blank, pipe, or the character itself");
    return value[0];
}

std::optional<std::int64_t> ReadHeaderLine(const ZT_PLUGIN::Conversion& conversion) {
    const char* const text = conversion.Parameter("header");
    if (text == nullptr) return std::nullopt;
    std::string_view value(text);
    if (IsSame(value, "none")) return 0;
    std::int64_t line = 0;
    const bool isLine = !value.empty() && TakeWhole(value, line) && value.empty() && line > 0;
    if (!isLine) RefuseValue("header", text, "the number of a line, from 1 on, or none");
    return line;
}

}  // namespace

Options ReadOptions(const ZT_PLUGIN::Conversion& conversion) {
    constexpr Named<Decimal> kDecimals[] = {
        {"point", Decimal::kPoint}, {".", Decimal::kPoint}, {"comma", Decimal::kComma}, {",", Decimal::kComma}};
    constexpr Named<Encoding> kEncodings[] = {
        {"utf-8", Encoding::kUtf8},         {"utf8", Encoding::kUtf8},
        {"utf-16le", Encoding::kUtf16Le},   {"utf-16be", Encoding::kUtf16Be},
        {"utf16le", Encoding::kUtf16Le},    {"utf16be", Encoding::kUtf16Be},
        {"cp1252", Encoding::kWindows1252}, {"windows-1252", Encoding::kWindows1252}};
    constexpr Named<DateOrder> kOrders[] = {{"dmy", DateOrder::kDayFirst}, {"mdy", DateOrder::kMonthFirst}};
    Options options;
    options.delimiter = ReadDelimiter(conversion);
    options.headerLine = ReadHeaderLine(conversion);
    Read(conversion, "decimal", kDecimals, "point or comma", options.decimal);
    Read(conversion, "encoding", kEncodings, "utf-8, utf-16le, utf-16be or windows-1252", options.encoding);
    Read(conversion, "dates", kOrders, "dmy or mdy", options.dates);
    if (const char* const time = conversion.Parameter("time")) options.time = time;
    if (const char* const text = conversion.Parameter("rate")) {
        Rate rate{};
        if (text[0] == '\0' || !ReadRate(text, rate)) {
            RefuseValue("rate", text,
                        "rows per second: a number such as 100 or 29.97, or a fraction such as 30000/1001");
        }
        options.rate = rate;
    }
    if (options.time && options.rate)
        throw Refusal("a column of times and a rate exclude each other; leave out time or rate");
    return options;
}

}  // namespace series
