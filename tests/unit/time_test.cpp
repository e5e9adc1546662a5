// Time codes, UTC times, their comparison, and the times that queries ask for.
#include <algorithm>
#include <limits>
#include <random>

#include "failure.h"
#include "gtest/gtest.h"
#include "reader/time_comparison.h"
#include "util/number_text.h"
#include "zentor/time_form.h"
#include "zentor/utc_time.h"

namespace zentor_test {

using namespace zentor;

namespace {

__extension__ typedef __int128 Wide;

constexpr std::int32_t kMin32 = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kMax32 = std::numeric_limits<std::int32_t>::max();
constexpr std::uint32_t kMaxU32 = std::numeric_limits<std::uint32_t>::max();
constexpr std::int64_t kMin64 = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t kMax64 = std::numeric_limits<std::int64_t>::max();

constexpr FrameRate k2997Drop = {30000, 1001, true};
constexpr FrameRate k5994Drop = {60000, 1001, true};

std::string CodeOf(std::int64_t frame, const FrameRate& rate) {
    char text[kWidestTimeCode];
    return {text, FormatTimeCode(frame, rate, text)};
}

// -1 for what is no time code.
std::int64_t FrameOf(std::string_view text, const FrameRate& rate) {
    std::int64_t frame = -1;
    return ParseTimeCode(text, rate, frame) ? frame : -1;
}

std::string Padded(std::int64_t number, std::size_t width) {
    std::string text = std::to_string(number);
    return text.insert(0, width - std::min(width, text.size()), '0');
}

// The numbers of a time code, counted on one by one as a clock does it.
struct Clock {
    int hours = 0, minutes = 0, seconds = 0, frames = 0;

    void Tick(int framesPerSecond, int dropped) {
        if (++frames < framesPerSecond) return;
        frames = 0;
        if (++seconds < 60) return;
        seconds = 0;
        if (++minutes == 60) {
            minutes = 0;
            ++hours;
        }
        if (minutes % 10 != 0) frames = dropped;
    }
    std::string Text(std::size_t frameDigits) const {
        return Padded(hours, 2) + ':' + Padded(minutes, 2) + ':' + Padded(seconds, 2) + ':' +
               Padded(frames, frameDigits);
    }
};

Wide FloorOf(Wide a, Wide b) {
    const Wide quotient = a / b;
    return quotient * b > a ? quotient - 1 : quotient;
}

Wide Gcd(Wide a, Wide b) { return b == 0 ? a : Gcd(b, a % b); }

// Numbers of all sizes, and the ends of their range.
template <class Number>
Number AnyNumber(std::mt19937_64& random) {
    using Limits = std::numeric_limits<Number>;
    const Number ends[] = {0, 1, 2, 1000, 1001, Limits::max(), Limits::max() - 1, Limits::min(), Limits::min() + 1};
    if (random() % 3 == 0) return ends[random() % std::size(ends)];
    return static_cast<Number>(static_cast<Number>(random()) >> (random() % (sizeof(Number) * 8)));
}

std::string Show(TimeValue time) { return std::to_string(time.numerator) + "/" + std::to_string(time.denominator); }

}  // namespace

TEST(TimeCode, EveryFrameOfADayIsCountedLikeAClock) {
    const struct {
        FrameRate rate;
        int framesPerSecond;
        int dropped;
        std::int64_t frames;
        std::string last;
    } cases[] = {
        {k2997Drop, 30, 2, 2589408, "23:59:59:29"},         {k5994Drop, 60, 4, 5178816, "23:59:59:59"},
        {{2997, 100, true}, 30, 2, 2589408, "23:59:59:29"}, {{24000, 1001, false}, 24, 0, 2073600, "23:59:59:23"},
        {{199, 2, false}, 100, 0, 8640000, "23:59:59:99"},  {{120000, 1001, false}, 120, 0, 10368000, "23:59:59:119"},
        {{1, 10, false}, 1, 0, 86400, "23:59:59:00"}};
    for (const auto& c : cases) {
        EXPECT_EQ(FramesPerDay(c.rate), c.frames);
        EXPECT_EQ(NominalRate(c.rate), static_cast<std::uint32_t>(c.framesPerSecond));
        EXPECT_EQ(CodeOf(c.frames - 1, c.rate), c.last);
        EXPECT_EQ(TimeCodeWidth(c.rate), c.last.size());
        EXPECT_EQ(CodeOf(c.frames, c.rate), "00:00:00:" + std::string(c.last.size() - 9, '0')) << "the next day";
        EXPECT_EQ(CodeOf(c.frames * 100 + 1234, c.rate), CodeOf(1234, c.rate));
        Clock clock;
        std::int64_t frame = 0;
        std::string before;
        // The text of every frame where drop frame can go wrong, and of one frame of each second elsewhere.
        for (; frame < c.frames; ++frame, clock.Tick(c.framesPerSecond, c.dropped)) {
            if (c.dropped == 0 && clock.frames != clock.seconds % c.framesPerSecond) continue;
            const std::string text = clock.Text(c.last.size() - 9);
            if (CodeOf(frame, c.rate) == text && FrameOf(text, c.rate) == frame && before < text) {
                before = text;
                continue;
            }
            FAIL() << frame << " is " << text << ", not " << CodeOf(frame, c.rate) << " " << FrameOf(text, c.rate);
        }
        EXPECT_EQ(clock.hours, 24);
    }
}

TEST(TimeCode, Texts) {
    const FrameRate film = {24, 1, false};
    const FrameRate fast = {120, 1, false};
    const std::tuple<FrameRate, std::string, std::int64_t> cases[] = {
        {k2997Drop, "00:00:59:29", 1799},  {k2997Drop, "00:01:00:02", 1800},
        {k2997Drop, "00:09:59:29", 17981}, {k2997Drop, "00:10:00:00", 17982},
        {k5994Drop, "00:00:59:59", 3599},  {k5994Drop, "00:01:00:04", 3600},
        {k5994Drop, "00:10:00:00", 35964}, {fast, "00:00:01:119", 239},
        {film, "23:59:59:23", 2073599},    {k2997Drop, "00:01:00:00", -1},
        {k2997Drop, "00:01:00:01", -1},    {k2997Drop, "23:59:00:01", -1},
        {k2997Drop, "00:00:00:30", -1},    {k5994Drop, "00:01:00:03", -1},
        {k5994Drop, "12:09:00:00", -1},    {fast, "00:00:00:00", -1},
        {fast, "00:00:00:0000", -1},       {fast, "00:00:00:120", -1},
        {fast, "00:00:00:-01", -1},        {film, "", -1},
        {film, "00:00:00:0", -1},          {film, "00:00:00:000", -1},
        {film, "24:00:00:00", -1},         {film, "00:60:00:00", -1},
        {film, "00:00:60:00", -1},         {film, "00:00:00:24", -1},
        {film, "-1:00:00:00", -1},         {film, "0 :00:00:00", -1},
        {film, "00:00:00:0x", -1}};
    for (const auto& [rate, text, frame] : cases) {
        EXPECT_EQ(FrameOf(text, rate), frame) << text;
        EXPECT_TRUE(frame < 0 || CodeOf(frame, rate) == text) << text;
    }
    EXPECT_EQ(FrameOf("00:00:01;02", k2997Drop), 32) << "any byte separates";
    EXPECT_EQ(Show(TimeOfFrame(1800, k2997Drop)), "3003/50");  // 1800 x 1001 / 30000
}

TEST(TimeCode, EveryFrameIsShownWhenItBegins) {
    const FrameRate rates[] = {{24000, 1001, false}, {25, 1, false}, k2997Drop, k5994Drop,
                               {120, 1, false},      {999, 1, false}};
    for (const FrameRate& rate : rates) {
        const std::int64_t frames = FramesPerDay(rate);
        std::int64_t wrong = -1;
        for (std::int64_t frame = 0; frame < frames; ++frame) {
            const TimeValue time = TimeOfFrame(frame, rate);
            if (FrameAt(time.numerator, time.denominator, rate) != frame) wrong = frame;
        }
        EXPECT_EQ(wrong, -1) << rate.numerator << "/" << rate.denominator;
    }
    std::mt19937_64 random(6);
    for (int run = 0; run < 200000; ++run) {
        const std::uint64_t denominator = 1 + random() % 4294967;
        const auto numerator = static_cast<std::uint32_t>(denominator + random() % (denominator * 999));
        const FrameRate rate = {numerator, static_cast<std::uint32_t>(denominator), false};
        const std::int64_t frame = static_cast<std::int64_t>(random() >> 1) % FramesPerDay(rate);
        const TimeValue time = TimeOfFrame(frame, rate);
        EXPECT_EQ(FrameAt(time.numerator, time.denominator, rate), frame) << numerator << "/" << denominator;
    }
}

TEST(TimeCode, RatesFromNumbers) {
    const std::tuple<double, std::uint32_t, std::uint32_t> cases[] = {
        {23.976, 24000, 1001}, {29.97, 30000, 1001},      {47.952, 48000, 1001},
        {59.94, 60000, 1001},  {119.88, 120000, 1001},    {239.76, 240000, 1001},
        {25, 25, 1},           {12.5, 12500000, 1000000}, {1e300, kMaxU32, 1},
        {1e-300, 1, 1000000},  {29.9, 29900000, 1000000}, {4294.5, 4294500000, 1000000}};
    for (const auto& [number, numerator, denominator] : cases) {
        const FrameRate rate = FrameRateNear(number, true);
        EXPECT_TRUE(rate.numerator == numerator && rate.denominator == denominator && rate.dropFrame) << number;
    }
}

TEST(TimeValue, Reduce) {
    const std::tuple<TimeValue, std::string, bool> cases[] = {{{6, 4}, "3/2", true},
                                                              {{3, 2}, "3/2", false},
                                                              {{5, 0}, "5/0", false},
                                                              {{0, 0}, "0/0", false},
                                                              {{0, 7}, "0/1", true},
                                                              {{-6, 4}, "-3/2", true},
                                                              {{kMin32, 2}, "-1073741824/1", true},
                                                              {{kMin32, 1U << 31}, "-2147483648/2147483648", true},
                                                              {{0, 1U << 31}, "0/2147483648", true}};
    for (const auto& [time, reduced, expected] : cases) {
        bool wasReduced = !expected;
        EXPECT_EQ(Show(Reduce(time, &wasReduced)), reduced);
        EXPECT_EQ(wasReduced, expected) << reduced;
    }
    std::mt19937_64 random(1);
    for (int run = 0; run < 20000; ++run) {
        const TimeValue time = {AnyNumber<std::int32_t>(random), AnyNumber<std::uint32_t>(random)};
        Wide divisor = time.denominator == 0 ? Wide{1} : Gcd(std::abs(std::int64_t{time.numerator}), time.denominator);
        if (divisor > kMax32) divisor = 1;
        const TimeValue reduced = Reduce(time);
        EXPECT_TRUE(reduced.numerator == time.numerator / divisor && reduced.denominator == time.denominator / divisor)
            << Show(time);
    }
}

TEST(TimeValue, Multiply) {
    std::mt19937_64 random(2);
    int exact = 0, approximate = 0, beyond = 0;
    const auto check = [&](TimeValue time, std::uint32_t numerator, std::uint32_t denominator) {
        TimeValue product = {7, 7};
        const std::uint32_t status = Multiply(time, numerator, denominator, product);
        const std::string what =
            Show(time) + " x " + std::to_string(numerator) + "/" + std::to_string(denominator) + " = " + Show(product);
        if (time.denominator == 0 || denominator == 0) {
            EXPECT_TRUE(status == 1 && Show(product) == "0/0") << what;
            return;
        }
        EXPECT_EQ(status, 0U);
        Wide x = Wide{time.numerator} * numerator;
        Wide y = Wide{time.denominator} * denominator;
        const Wide divisor = Gcd(x < 0 ? -x : x, y);
        x /= divisor;
        y /= divisor;
        if (x >= kMin32 && x <= kMax32 && y <= kMaxU32) {
            ++exact;
            EXPECT_TRUE(product.numerator == x && product.denominator == y) << what;
        } else if (x >= y * kMax32 || x <= y * kMin32) {
            ++beyond;
            EXPECT_TRUE(product.numerator == (x < 0 ? kMin32 : kMax32) && product.denominator == 1) << what;
        } else {
            // Farther from 0, by little more than the numbers between two whole ones stand apart.
            ++approximate;
            ASSERT_NE(product.denominator, 0U) << what;
            const Wide error = (Wide{product.numerator} * y - x * product.denominator) * (x < 0 ? -1 : 1);
            const Wide whole = (x < 0 ? -x : x) / y + 1;
            EXPECT_GE(error, 0) << what;
            EXPECT_LE(error / y * (kMax32 / 4), whole * product.denominator) << what;
        }
    };
    check({1, 3}, 3, 1);
    check({kMin32, 1}, 1, 1);
    check({kMin32, 3}, 1, kMaxU32);
    // Just below 1, with a denominator that takes three bits too many.
    check({613566757, 150700607}, 14, 57);
    check({-613566757, 150700607}, 14, 57);
    for (int run = 0; run < 200000; ++run) {
        const std::uint32_t numerator = AnyNumber<std::uint32_t>(random);
        const std::uint32_t denominator = AnyNumber<std::uint32_t>(random);
        const TimeValue time = {AnyNumber<std::int32_t>(random), AnyNumber<std::uint32_t>(random)};
        check(time, numerator, denominator);
        check({static_cast<std::int32_t>(denominator / 2), numerator}, numerator, denominator | 1);  // about a half
    }
    EXPECT_GT(exact, 10000);
    EXPECT_GT(approximate, 10000);
    EXPECT_GT(beyond, 10000);
}

TEST(TimeCode, FrameAtAnyTime) {
    std::mt19937_64 random(3);
    int saturated = 0;
    const auto check = [&](std::int64_t ticks, std::uint32_t scale, const FrameRate& rate) {
        const std::int64_t frame = FrameAt(ticks, scale, rate);
        Wide expected = FloorOf(Wide{ticks} * rate.numerator, Wide{scale} * rate.denominator);
        const Wide seconds = FloorOf(ticks, scale);
        if (seconds > kMax32) expected = FloorOf(Wide{kMax32} * rate.numerator, rate.denominator);
        if (seconds < kMin32) expected = FloorOf(Wide{kMin32} * rate.numerator, rate.denominator);
        saturated += seconds > kMax32 || seconds < kMin32 ? 1 : 0;
        EXPECT_TRUE(frame == expected) << ticks << "/" << scale << " at " << rate.numerator << "/" << rate.denominator
                                       << " is " << frame;
    };
    check(-1, kMaxU32, k2997Drop);
    for (int run = 0; run < 200000; ++run) {
        const FrameRate rate = {std::max(AnyNumber<std::uint32_t>(random), 1U),
                                std::max(AnyNumber<std::uint32_t>(random), 1U), false};
        const std::uint32_t scale = std::max(AnyNumber<std::uint32_t>(random), 1U);
        check(AnyNumber<std::int64_t>(random), scale, rate);
        check(AnyNumber<std::int32_t>(random), scale, rate);
        // Around the beginning of a frame.
        const std::int64_t begin = static_cast<std::int64_t>(random() % 1000000) * rate.denominator;
        for (const std::int64_t ticks : {begin - 1, begin, begin + 1}) check(ticks, rate.numerator, rate);
    }
    EXPECT_GT(saturated, 10000);
    char text[kWidestTimeCode];
    for (const std::int64_t frame : {kMax64, kMax64 - 1}) EXPECT_EQ(FormatTimeCode(frame, k2997Drop, text) - text, 11);
}

TEST(UtcTime, DaysOfTheCalendar) {
    const int lengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    std::mt19937 random(4);
    std::int64_t midnight = kFirstUtcSecond;
    UtcTime parsed;
    for (int year = 0; year <= 9999; ++year) {
        const bool isLeap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
        for (int month = 1; month <= 12; ++month) {
            const int days = lengths[month - 1] + (month == 2 && isLeap ? 1 : 0);
            const std::string begin = Padded(year, 4) + '-' + Padded(month, 2) + '-';
            for (int day = 1; day <= days; ++day, midnight += 86400) {
                if (year % 25 != 0 && day != 1 && day != days) continue;
                // Any time of the day, to any precision.
                const auto second = static_cast<std::uint32_t>(random() % 86400);
                const auto nanoseconds = static_cast<std::uint32_t>(random() % 1000000000);
                const auto precision = static_cast<std::uint32_t>(random() % 10);
                const std::string decimals = Padded(nanoseconds, 9).substr(0, precision);
                const std::string text = begin + Padded(day, 2) + 'T' + Padded(second / 3600, 2) + ':' +
                                         Padded(second / 60 % 60, 2) + ':' + Padded(second % 60, 2) +
                                         (precision == 0 ? "" : ".") + decimals + (day % 2 == 0 ? "Z" : "+00:00");
                char room[TimeForm::kWidestFormatted];
                const std::string back(room, FormatUtc(midnight + second, nanoseconds, precision, day % 2 == 0, room));
                ASSERT_TRUE(back == text && ParseUtc(text, parsed) && parsed.seconds == midnight + second &&
                            parsed.decimals == decimals)
                    << text << " " << back;
            }
            ASSERT_FALSE(ParseUtc(begin + Padded(days + 1, 2) + "T00:00:00Z", parsed)) << begin;
        }
    }
    EXPECT_EQ(midnight, kLastUtcSecond + 1);
    EXPECT_TRUE(ParseUtc("1970-01-01T00:00:00Z", parsed) && parsed.seconds == 0);
}

TEST(UtcTime, TextsThatAreNone) {
    UtcTime time;
    for (const std::string good : {"2021-10-11T12:30:20Z", "2021-10-10T12:30:20.50Z", "2021-10-11T12:30:20.5-10:00"}) {
        EXPECT_TRUE(ParseUtc(good, time)) << good;
        for (std::size_t i = 0; i < good.size(); ++i) {
            for (int byte = 0; byte < 256; ++byte) {
                const char c = static_cast<char>(byte);
                const std::string text = std::string(good).replace(i, 1, 1, c);
                if (c == good[i] || (IsDigit(c) && IsDigit(good[i])) || (c == '+' && good[i] == '-')) continue;
                EXPECT_FALSE(ParseUtc(text, time)) << text;
            }
            EXPECT_FALSE(ParseUtc(good.substr(0, i), time)) << good.substr(0, i);
        }
        for (const char* end : {" ", "0", "Z", "+01:30", "\n"}) EXPECT_FALSE(ParseUtc(good + end, time)) << good + end;
    }
    const std::string texts[] = {"2021-00-11T12:30:20Z",  "2021-13-11T12:30:20Z",      "2021-10-00T12:30:20Z",
                                 "2021-10-11T24:00:00Z",  "2021-10-11T12:60:20Z",      "2021-10-11T12:30:61Z",
                                 "2021-10-11T12:30:20.Z", "2021-10-11T12:30:20+24:00", "2021-10-11T12:30:20-00:60",
                                 "02021-10-11T12:30:20Z", "2021-1-011T12:30:20Z",      "2021-10-11T12:30:20+0100"};
    for (const std::string& text : texts) EXPECT_FALSE(ParseUtc(text, time)) << text;
}

TEST(TimeComparison, OfTexts) {
    const std::tuple<std::string, std::string, int> utc[] = {
        {"2020-01-01T00:00:00Z", "2020-01-01T00:00:00.000Z", 0},
        {"2020-01-01T00:00:00.1Z", "2020-01-01T00:00:00.100000000000Z", 0},
        {"2020-01-01T00:00:00.1Z", "2020-01-01T00:00:00.09999999999999Z", 1},
        {"2020-01-01T00:00:00.01Z", "2020-01-01T00:00:00.1Z", -1},
        {"2020-01-01T00:30:00+01:00", "2019-12-31T23:30:00Z", 0},
        {"2019-12-31T23:30:00-00:45", "2020-01-01T00:15:00+00:00", 0},
        {"2020-02-28T23:59:59-23:59", "2020-02-29T23:58:59Z", 0},
        {"0000-01-01T00:00:00+23:59", "0000-01-01T00:00:00Z", -1},
        {"9999-12-31T23:59:60-23:59", "9999-12-31T23:59:59Z", 1},
        {"2016-12-31T23:59:60Z", "2017-01-01T00:00:00Z", 0}};
    for (const auto& [left, right, order] : utc) {
        EXPECT_EQ(CompareUTCTime(left, right), order) << left << " " << right;
        EXPECT_EQ(CompareUTCTime(right, left), -order) << left << " " << right;
    }
    const std::tuple<std::string, std::string, int> codes[] = {
        {"00:00:59:29", "00:01:00:02", -1}, {"00:01:00;02", "00:01:00:02", 0}, {"10:00:00:00", "09:59:59:29", 1}};
    for (const auto& [left, right, order] : codes) {
        EXPECT_EQ(CompareSMPTETime(left, right, k2997Drop), order) << left << " " << right;
        EXPECT_EQ(CompareSMPTETime(right, left, k2997Drop), -order) << left << " " << right;
    }
    const std::string failure = " : invalid left or right time string.";
    const std::string good[] = {"2020-01-01T00:00:00Z", "00:00:00:00"};
    for (const std::string bad : {"", "00:01:00:00", "2020-01-01T00:00:00"}) {
        for (const bool isLeft : {true, false}) {
            EXPECT_EQ(FailureOf([&] { CompareUTCTime(isLeft ? bad : good[0], isLeft ? good[0] : bad); }),
                      "21: \"CompareUTCTime\"" + failure);
            EXPECT_EQ(FailureOf([&] { CompareSMPTETime(isLeft ? bad : good[1], isLeft ? good[1] : bad, k2997Drop); }),
                      "21: \"CompareSMPTETime\"" + failure);
        }
    }
}

TEST(TimeForm, QueriesAreCutDownToWhatTimesCanSay) {
    const auto order = [](const std::string& decimals, std::int64_t value, std::uint32_t scale) {
        const TimeForm form(TimeForm::Utc{decimals.empty() ? 0 : decimals.size() - 1, true});
        const std::string text = "1970-01-01T00:00:00" + decimals + "Z";
        Instant instant;
        EXPECT_TRUE(form.Parse(text, instant) && form.Width() == text.size()) << text;
        return Compare(instant, form.At(value, scale));
    };
    const std::string thirds = "." + std::string(5000, '3');
    const std::tuple<std::string, std::int64_t, std::uint32_t, int> cases[] = {
        {".333", 1, 3, 0},
        {".334", 1, 3, 1},
        {".332", 1, 3, -1},
        {".000", 1, kMaxU32, 0},
        {"", 1, 3, 0},
        {"", -1, 3, 1},
        {"", 999, 1000, 0},
        {"", 1, 1, -1},
        {thirds, 1, 3, 0},
        {thirds + "4", 1, 3, 1},
        {thirds + "2", 1, 3, -1},
        {".5", -1, 2, 1},
        {".999999999", kMaxU32 - 1, kMaxU32, 0},
        {".9999999997", kMaxU32 - 1, kMaxU32, 0}};
    for (const auto& [decimals, value, scale, expected] : cases) {
        EXPECT_EQ(order(decimals, value, scale), expected) << decimals << " " << value << "/" << scale;
    }
    std::mt19937_64 random(5);
    for (int run = 0; run < 20000; ++run) {
        const std::uint32_t scale = std::max(AnyNumber<std::uint32_t>(random), 1U);
        const std::int64_t value = static_cast<std::int64_t>(random() % scale);
        const std::size_t precision = 1 + random() % 9;
        std::int64_t unit = 1;
        for (std::size_t i = 0; i < precision; ++i) unit *= 10;
        const auto at = static_cast<std::int64_t>(Wide{value} * unit / scale);
        for (const std::int64_t decimals : {at - 1, at, at + 1}) {
            if (decimals < 0 || decimals >= unit) continue;
            EXPECT_EQ(order("." + Padded(decimals, precision), value, scale), decimals - at);
        }
    }
    const TimeForm codes(k2997Drop);
    EXPECT_EQ(codes.At(86400, 1).whole, 2589407) << "as the last of the day";
    EXPECT_EQ(codes.At(1001, 30000).whole, 1);
    EXPECT_EQ(codes.At(1000, 30000).whole, 0);
    EXPECT_EQ(codes.At(-1, 1000000).whole, -1);
}

TEST(TimeForm, FormatsWhatItParses) {
    const auto formatted = [](const TimeForm& form, std::int64_t ticks, std::uint32_t scale) -> std::string {
        char text[TimeForm::kWidestFormatted];
        Instant instant, parsed;
        const char* const end = form.Format(ticks, scale, text, instant);
        if (end == nullptr) return "none";
        const std::string_view written(text, static_cast<std::size_t>(end - text));
        EXPECT_TRUE(form.Parse(written, parsed) && parsed == instant) << written;
        EXPECT_EQ(written.size(), form.Width());
        return std::string(written);
    };
    const auto utc = [](std::uint64_t precision, bool isGmt) { return TimeForm(TimeForm::Utc{precision, isGmt}); };
    const TimeForm drop(k2997Drop);
    const std::tuple<TimeForm, std::int64_t, std::uint32_t, std::string> cases[] = {
        {drop, 3003, 50, "00:01:00:02"},
        {drop, 86399, 1, "23:59:59:02"},
        {TimeForm(FrameRate{1000, 1, false}), 1999, 1000, "00:00:01:999"},
        {utc(0, true), -1, 2, "1969-12-31T23:59:59Z"},
        {utc(3, false), -1, 3, "1969-12-31T23:59:59.666+00:00"},
        {utc(9, true), kMaxU32 - 1, kMaxU32, "1970-01-01T00:00:00.999999999Z"},
        {utc(0, true), kFirstUtcSecond, 1, "0000-01-01T00:00:00Z"},
        {utc(0, true), kLastUtcSecond, 1, "9999-12-31T23:59:59Z"}};
    for (const auto& [form, ticks, scale, text] : cases) {
        EXPECT_EQ(formatted(form, ticks, scale), text) << ticks << "/" << scale;
    }
    const std::tuple<TimeForm, std::int64_t, std::uint32_t> none[] = {{drop, 0, 0},
                                                                      {drop, -1, 1000},
                                                                      {drop, 86400, 1},
                                                                      {drop, kMax64, 1},
                                                                      {TimeForm(FrameRate{1001, 1, false}), 0, 1},
                                                                      {utc(10, true), 0, 1},
                                                                      {utc(0, true), 0, 0},
                                                                      {utc(0, true), kFirstUtcSecond - 1, 1},
                                                                      {utc(0, true), kLastUtcSecond + 1, 1},
                                                                      {utc(0, true), kMin64, 3}};
    for (const auto& [form, ticks, scale] : none) EXPECT_EQ(formatted(form, ticks, scale), "none") << ticks;
    Instant instant;
    const std::tuple<std::uint64_t, bool, std::string> others[] = {{3, false, ".123Z"}, {3, true, ".123+00:00"},
                                                                   {3, true, ".12Z"},   {3, true, ".1234Z"},
                                                                   {3, true, "Z"},      {0, true, ".0Z"}};
    for (const auto& [precision, isGmt, end] : others) {
        EXPECT_FALSE(utc(precision, isGmt).Parse("1970-01-01T00:00:00" + end, instant)) << end;
    }
}

}  // namespace zentor_test
