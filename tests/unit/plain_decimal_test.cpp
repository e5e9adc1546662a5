// Numbers that go into a document as they stand must be what parsing and formatting would have made of them.
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdio>
#include <random>
#include <string>

#include "util/number_text.h"

namespace zentor {

namespace {

// What the way through double makes of a decimal.
std::string Formatted(const std::string& decimal, NumberForm form = NumberForm::kSixteenDigits) {
    double value = 0;
    EXPECT_EQ(ParseNumber(decimal.data(), decimal.data() + decimal.size(), value), decimal.data() + decimal.size());
    return std::string(FormatNumber(value, form).view());
}

std::string Scanned(const std::string& text, NumberForm form = NumberForm::kSixteenDigits) {
    const PlainDecimal plain = ScanPlainDecimal(text.data(), text.data() + text.size(), form);
    return plain.end == nullptr ? std::string() : std::string(text.data(), plain.canonicalEnd);
}

}  // namespace

TEST(PlainDecimal, Cases) {
    const struct {
        const char* text;
        const char* canonical;
        std::size_t length;  // of the number, when it is taken
    } cases[] = {
        {"0", "0", 1},
        {"-0", "-0", 2},
        {"0.000", "0", 5},
        {"-0.0", "-0", 4},
        {"12,3", "12", 2},
        {"12.50x", "12.5", 5},
        {"12.", "12", 3},
        {"-7.25", "-7.25", 5},
        {"0.5", "0.5", 3},
        {"0.49", "0.49", 4},
        {"0.0001", "0.0001", 6},
        {"7.999", "7.999", 5},
        {"8", "8", 1},
        {"8.1", "8.1", 3},
        {"8.2", "", 0},
        {"63.5", "63.5", 4},
        {"64", "64", 2},
        {"64.0", "64", 4},
        {"98.3333", "", 0},
        {"0.0009765626", "0.0009765626", 12},
        {"999999999999999", "999999999999999", 15},
        {"123456789012345", "123456789012345", 15},
        {"1234567890123456", "", 0},
        {"0.00001", "", 0},
        {"007", "", 0},
        {"+1", "", 0},
        {".5", "", 0},
        {"1e5", "", 0},
        {"1.5E5", "", 0},
        {"-", "", 0},
        {"", "", 0},
        {"x", "", 0},
        {"0.00000000000000000000000000001", "", 0},
        {"1.0000000000000000000000", "", 0},
    };
    for (const auto& c : cases) {
        const std::string text = c.text;
        const PlainDecimal plain = ScanPlainDecimal(text.data(), text.data() + text.size(), NumberForm::kSixteenDigits);
        EXPECT_EQ(Scanned(text), c.canonical);
        EXPECT_EQ(plain.end, c.length == 0 ? nullptr : text.data() + c.length) << text;
    }
}

TEST(PlainDecimal, IsWhatFormattingGives) {
    std::mt19937_64 random(7);
    int taken = 0;
    for (int k = 0; k < 300000; ++k) {
        std::string digits = std::to_string(random() % static_cast<std::uint64_t>(std::pow(10, 1 + k % 15)));
        const std::size_t fraction = random() % (digits.size() + 5);
        if (fraction >= digits.size()) digits.insert(0, fraction - digits.size() + 1, '0');
        if (fraction != 0) digits.insert(digits.size() - fraction, ".");
        const std::string text = (k % 3 == 0 ? "-" : "") + digits;
        const std::string shortest = Scanned(text, NumberForm::kShortest);
        if (!shortest.empty()) {
            ASSERT_EQ(shortest, Formatted(text, NumberForm::kShortest)) << text;
        }
        const std::string scanned = Scanned(text);
        if (scanned.empty()) continue;
        ++taken;
        ASSERT_EQ(scanned, Formatted(text)) << text;
    }
    EXPECT_GT(taken, 150000);
}

// Around the limits, where doubles begin to be farther apart than numbers of 16 digits.
TEST(PlainDecimal, AroundTheLimits) {
    for (const double limit : {0x1p-11, 0x1p-7, 0x1p-4, 0x1p-1, 0x1p3, 0x1p6, 0x1p9, 0x1p13, 0x1p23, 0x1p33, 0x1p43}) {
        for (int step = -3000; step <= 3000; ++step) {
            char text[32];
            std::snprintf(text, sizeof text, "%.15g", limit * (1 + step * 1e-14));
            const std::string scanned = Scanned(text);
            if (!scanned.empty()) {
                ASSERT_EQ(scanned, Formatted(text)) << text;
            }
        }
    }
}

TEST(ShortestNumber, Cases) {
    const struct {
        double value;
        const char* text;
        const char* plain;  // without an exponent
    } cases[] = {
        {0, "0", "0"},
        {-0.0, "-0", "-0"},
        {8.2, "8.2", "8.2"},
        {0.1 + 0.2, "0.30000000000000004", "0.30000000000000004"},
        {1e15, "1000000000000000", "1000000000000000"},
        {9007199254740993.0, "9007199254740992", "9007199254740992"},
        {9999999999999998.0, "9999999999999998", "9999999999999998"},
        {1e16, "1e+16", "10000000000000000"},
        {1.5e20, "1.5e+20", "150000000000000000000"},
        {-1e100, "-1e+100",
         "-10000000000000000159028911097599180468360808563945281389781327557747838772170381060813469985856815104"},
        {1e-4, "0.0001", "0.0001"},
        {9.9e-10, "9.9e-10", "0.00000000099"},
        {0.00012345678901234567, "0.00012345678901234567", "0.00012345678901234567"},
        {1.7976931348623157e308, "1.7976931348623157e+308", nullptr},
        {5e-324, "5e-324", nullptr},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(FormatShortest(c.value).view(), c.text);
        char plain[kPlainNumberRoom];
        const char* const plainEnd = FormatPlainShortest(c.value, plain);
        const std::string text(static_cast<const char*>(plain), plainEnd);
        if (c.plain != nullptr) {
            EXPECT_EQ(text, c.plain);
        }
        double back = 1;
        EXPECT_EQ(ParseNumber(text.data(), text.data() + text.size(), back), text.data() + text.size());
        EXPECT_EQ(back, c.value) << text;
    }
}

// All doubles alike, so that most have 17 digits and large exponents.
TEST(ShortestNumber, GivesEveryDoubleBack) {
    std::mt19937_64 random(11);
    for (int k = 0; k < 300000; ++k) {
        const auto value = std::bit_cast<double>(random());
        if (!std::isfinite(value)) continue;
        const NumberText text = FormatShortest(value);
        ASSERT_LE(text.length, NumberText::kRoom);
        double back = 0;
        const char* const end = text.bytes + text.length;
        ASSERT_EQ(ParseNumber(text.bytes, end, back), end) << text.view();
        ASSERT_EQ(std::bit_cast<std::uint64_t>(back), std::bit_cast<std::uint64_t>(value)) << text.view();
        char plain[kPlainNumberRoom];
        ASSERT_LE(FormatPlainShortest(value, plain) - plain, std::ptrdiff_t{342});
    }
}

}  // namespace zentor
