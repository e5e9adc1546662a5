// Text conversions and the text of numbers.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <tuple>

#include "failure.h"
#include "util/number_text.h"
#include "util/text_encoding.h"
#include "util/utf_codec.h"

namespace zentor_test {

using namespace zentor;

namespace {

constexpr double kLargest = std::numeric_limits<double>::max();

constexpr const char* kBadUtf16LowText = "1: Bad UTF-16 - leading low surrogate";
constexpr const char* kBadUtf16MissingText = "1: Bad UTF-16 - missing low surrogate";
constexpr const char* kBadUnicodeText = "1: Incomplete Unicode at end of string";

std::u16string Letters(std::size_t count) { return std::u16string(count, u'a'); }

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

TEST(TextEncoding, CodePointsNeedTheirRoom) {
    const std::pair<std::uint32_t, std::string> cases[] = {
        {0, std::string(1, '\0')},     {0x7F, "\x7F"},           {0x80, "\xC2\x80"},
        {0x7FF, "\xDF\xBF"},           {0x800, "\xE0\xA0\x80"},  {0xD7FF, "\xED\x9F\xBF"},
        {0xE000, "\xEE\x80\x80"},      {0xFFFF, "\xEF\xBF\xBF"}, {0x10000, "\xF0\x90\x80\x80"},
        {0x10FFFF, "\xF4\x8F\xBF\xBF"}};
    for (const auto& [codePoint, bytes] : cases) {
        std::string room(bytes.size(), '?');
        EXPECT_EQ(EncodeCodePoint(codePoint, room), bytes.size()) << codePoint;
        EXPECT_EQ(room, bytes);
        std::string tooSmall(bytes.size() - 1, '?');
        EXPECT_EQ(EncodeCodePoint(codePoint, tooSmall), 0u) << codePoint;
        EXPECT_EQ(tooSmall, std::string(bytes.size() - 1, '?'));
    }
    char room[4];
    for (const std::uint32_t bad : {0x110000u, 0xFFFFFFFFu}) {
        EXPECT_EQ(FailureOf([&] { EncodeCodePoint(bad, room); }), "1: Bad UTF-32 - out of range.");
    }
    for (const std::uint32_t bad : {0xD800u, 0xDBFFu, 0xDC00u, 0xDFFFu}) {
        EXPECT_EQ(FailureOf([&] { EncodeCodePoint(bad, room); }), "1: Bad UTF-32 - surrogate code point");
    }
}

TEST(TextEncoding, BlocksEndBeforeWhatDoesNotFit) {
    const std::tuple<std::u16string, std::size_t, std::size_t> cases[] = {
        {u"", 0, 0},
        {Letters(20000), 16384, 16384},
        {Letters(16382) + u"\u00E9z", 16383, 16384},
        {Letters(16383) + u"\u00E9z", 16383, 16383},
        {Letters(16381) + u"\u20AC", 16382, 16384},
        {Letters(16382) + u"\u20AC", 16382, 16382},
        {Letters(16380) + u"\U0001F600", 16382, 16384},
        {Letters(16381) + u"\U0001F600", 16381, 16381},
        {u"ab\xD83D", 2, 2},                        // the rest of the pair may come with the next run
        {Letters(16384) + u"\xDC00", 16384, 16384}  // behind a full block: the matter of the next one
    };
    for (const auto& [units, consumed, produced] : cases) {
        std::array<char, kUtf8BlockSize> block;
        Utf8Block done{77, 77};
        EXPECT_EQ(FailureOf([&] { done = ConvertRun(units, block); }), "");
        EXPECT_EQ(std::pair(done.unitsConsumed, done.bytesProduced), std::pair(consumed, produced)) << units.size();
    }
}

TEST(TextEncoding, WholeTextsAcrossBlocks) {
    // Every code point twice, so that blocks end within sequences of all lengths; the second pass starts elsewhere.
    std::string utf8;
    for (int pass = 0; pass < 2; ++pass, utf8 += "x") {
        for (std::uint32_t codePoint = 0; codePoint <= kLargestCodePoint; ++codePoint) {
            if (!IsHighSurrogate(codePoint) && !IsLowSurrogate(codePoint)) AppendUtf8(utf8, codePoint);
        }
    }
    const std::u16string utf16 = Utf8ToUtf16(utf8);
    EXPECT_EQ(utf16.size(), 2 * (0x10000 - 0x800 + 2 * 0x100000 + 1));
    EXPECT_TRUE(Utf16ToUtf8(utf16) == utf8);
    std::string checked = "old";
    ConvertToUtf8(utf16, checked);
    EXPECT_TRUE(checked == utf8);
    ConvertToUtf8(u"", checked);
    EXPECT_EQ(checked, "");
}

TEST(TextEncoding, FailuresLeaveWhatWasConverted) {
    const std::tuple<std::u16string, const char*, std::size_t> cases[] = {
        {u"\xDC00", kBadUtf16LowText, 0},
        {u"a\xDFFF\xD800", kBadUtf16LowText, 0},
        {u"\xD800\u0041", kBadUtf16MissingText, 0},
        {u"\xD83D\xD83D\xDE00", kBadUtf16MissingText, 0},
        {u"\xD83D", kBadUnicodeText, 0},
        {u"aaa\xDBFF", kBadUnicodeText, 3},
        {Letters(20000) + u"\xDC00", kBadUtf16LowText, 16384},
        {Letters(16384) + u"\xDC00", kBadUtf16LowText, 16384},
        {Letters(16384) + u"\xD83D", kBadUnicodeText, 16384},
        {Letters(16383) + u"\xD83D", kBadUnicodeText, 16383}};
    for (const auto& [units, failure, kept] : cases) {
        std::string text = "old";
        EXPECT_EQ(FailureOf([&] { ConvertToUtf8(units, text); }), failure) << units.size() << " units";
        EXPECT_EQ(text.size(), kept) << units.size() << " units";
    }
}

TEST(TextEncoding, OnlyAsciiIsWidened) {
    EXPECT_EQ(WidenAscii("^1 \x7F"), u"^1 \x7F");
    EXPECT_EQ(WidenAscii(""), u"");
    EXPECT_EQ(WidenAscii("abc\xE9"), u"");
}

// Continuations without a lead, overlong forms, surrogates, numbers above U+10FFFF: one mark a byte; sequences cut
// short: one for the whole of it.
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
