// Text conversions and the text of numbers.
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <tuple>

#include "failure.h"
#include "util/number_text.h"
#include "util/utf_codec.h"

namespace zentor_test {

using namespace zentor;

namespace {

constexpr double kLargest = std::numeric_limits<double>::max();

// The number's text, by way of the C library.
std::string ReferenceText(double value) {
    char text[64];
    std::snprintf(text, sizeof text, "%.16g", value);
    std::string result = text;
    if (result.find('.') != std::string::npos) {
        result.erase(result.find_last_not_of('0') + 1);
        if (result.back() == '.') result.pop_back();
    }
    return result;
}

// Where the number at the beginning of `text` ends, or npos when there is none.
std::size_t ParsedLength(const std::string& text, double& value) {
    const char* const end = ParseNumber(text.data(), text.data() + text.size(), value);
    return end == nullptr ? std::string::npos : static_cast<std::size_t>(end - text.data());
}

}  // namespace

TEST(UtfCodec, MalformedTextIsReplaced) {
    EXPECT_EQ(
        Utf8ToUtf16("\x80|\xC0\xAF|\xC1\x81|\xE0\x9F\xBF|\xF0\x8F\xBF\xBF|\xED\xA0\xBD|\xF4\x90\x80\x80|\xF5\xFF"),
        u"\uFFFD|\uFFFD\uFFFD|\uFFFD\uFFFD|\uFFFD\uFFFD\uFFFD|\uFFFD\uFFFD\uFFFD\uFFFD|\uFFFD\uFFFD\uFFFD|"
        u"\uFFFD\uFFFD\uFFFD\uFFFD|\uFFFD\uFFFD");
    EXPECT_EQ(Utf8ToUtf16("\xC3|\xE2\x82|\xF0\x9F\x98|\xE2\x82\xE2\x82\xAC|\xF0\x9F"),
              u"\uFFFD|\uFFFD|\uFFFD|\uFFFD\u20AC|\uFFFD");
    EXPECT_EQ(Utf16ToUtf8(u"\xD83D|\xDE00|\xD83D\xD83D\xDE00|\xDE00\xD83D"),
              "\uFFFD|\uFFFD|\uFFFD\U0001F600|\uFFFD\uFFFD");
}

TEST(NumberText, Formatting) {
    for (const char* text : {"0",
                             "-0",
                             "2.5",
                             "3",
                             "0.1",
                             "100",
                             "-100.5",
                             "0.3333333333333333",
                             "0.0001",
                             "1e-05",
                             "1.25e-05",
                             "1000000000000000",
                             "9007199254740991",
                             "-9007199254740992",
                             "9999999999999998",
                             "1e+16",
                             "1.234567890123457e+17",
                             "1e+20",
                             "1e+100",
                             "1e-300",
                             "4.940656458412465e-324",
                             "1.797693134862315e+308"}) {
        EXPECT_EQ(FormatNumber(std::strtod(text, nullptr)).view(), text);
    }
    EXPECT_EQ(FormatNumber(9.2).view(), "9.199999999999999");
    EXPECT_EQ(FormatNumber(123456789012345678.0).view(), "1.234567890123457e+17");
    // The zeros of an exponent go too.
    EXPECT_EQ(FormatNumber(1.5e20).view(), "1.5e+2");
    EXPECT_EQ(FormatNumber(-2.5e100).view(), "-2.5e+1");
    EXPECT_EQ(FormatNumber(2.5e-310).view(), "2.500000000000017e-31");
}

TEST(NumberText, AgreesWithTheCLibrary) {
    std::mt19937_64 random(20260);
    const auto check = [](double value) {
        if (!std::isfinite(value)) return;
        EXPECT_EQ(FormatNumber(value).view(), ReferenceText(value)) << ReferenceText(value);
    };
    for (int k = 0; k < 5000 && !testing::Test::HasFailure(); ++k) {
        const std::uint64_t bits = random();
        check(std::bit_cast<double>(bits));
        check(static_cast<double>(static_cast<std::int64_t>(bits)));
        check(static_cast<double>(static_cast<std::int64_t>(bits) >> (bits % 64)));
        check(static_cast<double>(bits % 100000000) / 1000);
        check(std::ldexp(static_cast<double>(bits % 1000001), static_cast<int>(bits >> 58) - 32));
    }
}

TEST(NumberText, WritableNumbersCanBeReadBack) {
    double value = kLargest;
    bool seen[] = {false, false};
    for (int k = 0; k < 100; ++k, value = std::nextafter(value, 0)) {
        double back = 0;
        const std::string text(FormatNumber(value).view());
        const bool readable = ParsedLength(text, back) == text.size();
        EXPECT_EQ(IsWritable(value), readable) << text;
        EXPECT_EQ(IsWritable(-value), readable) << text;
        seen[readable] = true;
    }
    EXPECT_TRUE(seen[0] && seen[1]);
    EXPECT_FALSE(IsWritable(-std::numeric_limits<double>::infinity()) || IsWritable(std::nan("")));
}

TEST(NumberText, Digits) {
    const std::tuple<const char*, std::uint64_t, std::uint64_t, bool> cases[] = {
        {"0", 1, 0, false},     {"-0", 1, 0, true},        {"12.5", 2, 1, false},  {"-123.0625", 3, 4, true},
        {"1e+20", 1, 0, false}, {"-1.25e-05", 1, 2, true}, {"1.5e+2", 1, 1, false}};
    for (const auto& [number, integer, decimal, isNegative] : cases) {
        const DigitCounts digits = CountDigits(number);
        EXPECT_EQ(std::tuple(number, digits.integer, digits.decimal, digits.isNegative),
                  std::tuple(number, integer, decimal, isNegative));
    }
}

TEST(NumberText, Parsing) {
    double value = 0;
    for (const std::string text :
         {"12", "-12.5", "+12", ".5", "-.5", "5.", "1E3", "+1e+3", "007", "1e-05", "1e-310", "3e-324", "0e-99999",
          "-0.0e99999", "9007199254740993", "1.7976931348623157e308", "2.2250738585072011e-308"}) {
        for (const char* rest : {"", " ", ",5", "x", "e", "e+", "-1"}) {
            const std::string input = text + rest;
            EXPECT_EQ(ParsedLength(input, value), text.size()) << input;
            EXPECT_EQ(std::bit_cast<std::uint64_t>(value),
                      std::bit_cast<std::uint64_t>(std::strtod(text.c_str(), nullptr)))
                << input;
        }
        EXPECT_EQ(ParseNumber(text.data(), text.data() + 1, value) == nullptr, !(text[0] >= '0' && text[0] <= '9'));
    }
    EXPECT_EQ(ParsedLength("0x10", value), 1u);
    for (const char* text : {"",
                             "+",
                             "-",
                             ".",
                             "e5",
                             " 1",
                             "++1",
                             "+-1",
                             "-+1",
                             "--1",
                             ".e1",
                             "inf",
                             "-inf",
                             "+Infinity",
                             "nan",
                             "-NaN",
                             "1e400",
                             "-1e400",
                             "1e99999999999999999999",
                             "1e-400",
                             "2e-324"}) {
        EXPECT_EQ(ParsedLength(text, value), std::string::npos) << text;
    }
}

}  // namespace zentor_test
