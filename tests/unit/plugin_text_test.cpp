// What plug-ins are given to make texts for documents: times and escapes.
#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include <random>

#include "model/include/iso_time.h"
#include "model/include/json_text.h"
#include "util/escaped_text.h"
#include "written_document.h"
#include "zentor/utc_time.h"

namespace zentor_test {

namespace {

// The time string with so many decimals in UTC; "no" for what is no time.
std::string Utc(const std::string& text, std::uint32_t precision = 0) {
    ZT_PLUGIN::IsoTime time{7, "7", true};
    if (ZT_PLUGIN::ParseIsoTime(text, time)) return ZT_PLUGIN::UtcString(time, precision, true);
    EXPECT_TRUE(time.seconds == 7 && time.decimals == "7" && time.hasZone) << text;
    return "no";
}

}  // namespace

TEST(IsoTime, WhatIsATime) {
    const struct {
        const char* text;
        std::uint32_t precision;
        const char* expected;
    } cases[] = {
        {"2026-06-01T08:30:05Z", 0, "2026-06-01T08:30:05Z"},
        {"2026-06-01t08:30:05z", 3, "2026-06-01T08:30:05.000Z"},
        {"2026-06-01 08:30:05,25+0200", 3, "2026-06-01T06:30:05.250Z"},
        {"20260601T083005.999999999999-01", 9, "2026-06-01T09:30:05.999999999Z"},
        {"20260601T0830+05:45", 0, "2026-06-01T02:45:00Z"},
        {"2026-06-01T08", 1, "2026-06-01T08:00:00.0Z"},
        {"2026-06-01T08:30", 0, "2026-06-01T08:30:00Z"},
        {"2026-06-01", 0, "2026-06-01T00:00:00Z"},
        {"20260601", 2, "2026-06-01T00:00:00.00Z"},
        {"2024-02-29T23:59:59-00:01", 0, "2024-03-01T00:00:59Z"},
        {"2000-02-29T00:00:00+00:01", 0, "2000-02-28T23:59:00Z"},
        {"2016-12-31T23:59:60.5Z", 1, "2017-01-01T00:00:00.5Z"},
        {"2026-12-31T24:00:00.0Z", 0, "2027-01-01T00:00:00Z"},
        {"1969-12-31T23:59:59.75Z", 2, "1969-12-31T23:59:59.75Z"},
        {"0000-01-01T00:00:00Z", 0, "0000-01-01T00:00:00Z"},
        {"9999-12-31T23:59:59.9Z", 1, "9999-12-31T23:59:59.9Z"},
        {"9999-12-31T23:59:59.99Z", 1, "9999-12-31T23:59:59.9Z"},
    };
    for (const auto& c : cases) EXPECT_EQ(Utc(c.text, c.precision), c.expected) << c.text;
    ZT_PLUGIN::IsoTime time;
    EXPECT_TRUE(ZT_PLUGIN::ParseIsoTime("1970-01-01T00:00:01.250", time));
    EXPECT_TRUE(time.seconds == 1 && time.decimals == "250" && !time.hasZone);
    EXPECT_EQ(ZT_PLUGIN::UtcString(time, 1, false), "1970-01-01T00:00:01.2+00:00");
    EXPECT_TRUE(ZT_PLUGIN::ParseIsoTime("1970-01-01T00-00", time) && time.hasZone);
}

TEST(IsoTime, WhatIsNone) {
    for (const char* text : {
             "",
             "2026",
             "2026-06",
             "2026-6-1",
             "202606",
             "2026-0601",
             "202606-01",
             "2026-02-29",
             "1900-02-29",
             "2026-04-31",
             "2026-00-01",
             "2026-13-01",
             "2026-01-00",
             "2026-W23-1",
             "2026-152",
             "2026/06/01",
             "01.06.2026",
             "+2026-06-01",
             "-001-06-01",
             " 2026-06-01",
             "2026-06-01 ",
             "2026-06-01T",
             "2026-06-01Z",
             "2026-06-01T8:30",
             "2026-06-01T08:3",
             "2026-06-01T08:",
             "2026-06-01T08:30:",
             "2026-06-01T08:3005",
             "2026-06-01T083:00",
             "2026-06-01T08:30:5",
             "2026-06-01T24:00:01",
             "2026-06-01T24:00:00.1",
             "2026-06-01T25:00",
             "2026-06-01T08:60",
             "2026-06-01T08:30:61",
             "2026-06-01T08:30.5",
             "2026-06-01T08:30:05.",
             "2026-06-01T08:30:05.Z",
             "2026-06-01T08:30:05ZZ",
             "2026-06-01T08:30:05 Z",
             "2026-06-01T08:30:05+",
             "2026-06-01T08:30:05+1",
             "2026-06-01T08:30:05+24:00",
             "2026-06-01T08:30:05+01:60",
             "2026-06-01T08:30:05+01:0",
             "2026-06-01T08:30:05+01:000",
             "2026-06-01T08:30:05+01:00Z",
             "2026-06-01T08:30:05UTC",
             "0000-01-01T00:00:00+00:01",
             "9999-12-31T23:59:59-00:01",
             "9999-12-31T24:00:00Z",
             "1780295405",
             "nan",
         }) {
        EXPECT_EQ(Utc(text), "no") << text;
    }
    EXPECT_EQ(Utc(std::string("2026-06-01\0", 11)), "no");
}

// Against the library's own way with times, all over the years.
TEST(IsoTime, ManyDays) {
    constexpr std::int64_t kDay = 86400;
    for (std::int64_t seconds = kFirstUtcSecond; seconds <= kLastUtcSecond; seconds += 13 * kDay) {
        char buffer[40];
        const std::int64_t ofDay = (seconds / kDay % 1440 + 1440) % 1440 * 60 + 59;
        const std::string text(buffer, FormatUtc(seconds + ofDay, 120000000, 2, true, buffer));
        ZT_PLUGIN::IsoTime time;
        ASSERT_TRUE(ZT_PLUGIN::ParseIsoTime(text, time)) << text;
        ASSERT_EQ(time.seconds, seconds + ofDay) << text;
        ASSERT_EQ(ZT_PLUGIN::UtcString(time, 2, true), text);
    }
}

TEST(JsonText, WhatIsEscaped) {
    const std::pair<std::string, std::string> cases[] = {
        {"", ""},
        {"Brustgurt 4, größer – 心拍数 😀", "Brustgurt 4, größer – 心拍数 😀"},
        {R"(5" x C:\data)", R"(5\" x C:\\data)"},
        {std::string("\0\b\t\n\f\r\x1F\x7F/", 9), "\\u0000\\u0008\\t\\n\\u000C\\r\\u001F\x7F/"},
        {"gr\xFC\xDF", "grüß"},
        {"\x80\x81\x85\x8D\x8F\x90\x93\x9D\x9F\xA0\xFF", "€\uFFFD…\uFFFD\uFFFD\uFFFD“\uFFFDŸ\u00A0ÿ"},
        {"\xC3", "Ã"},                      // cut short
        {"\xE2\x82x", "â‚x"},               // in the middle
        {"\xC0\xAF", "À¯"},                 // longer than need be
        {"\xE0\x9F\xBF", "àŸ¿"},            // likewise
        {"\xED\xA0\x80", "í\u00A0€"},       // a surrogate
        {"\xF4\x90\x80\x80", "ô\uFFFD€€"},  // beyond the last one
        {"\xF0\x8F\xBF\xBF\xF5", "ð\uFFFD¿¿õ"},
        {"\xF4\x8F\xBF\xBF\xED\x9F\xBF\xEE\x80\x80\xC2\x80",
         "\U0010FFFF\xED\x9F\xBF"
         "\uE000\u0080"},
    };
    for (const auto& [text, escaped] : cases) {
        EXPECT_EQ(ZT_PLUGIN::EscapedText(text), escaped);
        EXPECT_EQ(ZT_PLUGIN::EscapedSampleText(text), escaped);
    }
    EXPECT_EQ(ZT_PLUGIN::EscapedText("[1]"), "[1]");
    EXPECT_EQ(ZT_PLUGIN::EscapedSampleText("a]\"["), "a\\u005D\\\"\\u005B");
}

// Authors escape with a header of their own, faithful documents with the library's code; both mean the same, and what
// was escaped by the one is left by the other.
TEST(EscapedText, IsThatOfFaithfulDocuments) {
    const auto decoded = [](const std::string& escaped) {
        rapidjson::Document document;
        document.Parse(('"' + escaped + '"').c_str());
        EXPECT_FALSE(document.HasParseError()) << escaped;
        return document.HasParseError() ? std::string() : std::string(document.GetString(), document.GetStringLength());
    };
    std::mt19937 random(17);
    const std::string_view alphabet = "ab\"\\/u0[]\n\x01\x7F\xC3\xA9\xE2\x82\xAC\xFF\x80\x8D";
    for (int k = 0; k < 20000; ++k) {
        std::string text;
        for (std::size_t length = random() % 12; text.size() < length;) text += alphabet[random() % alphabet.size()];
        std::string room;
        const std::string own(zentor::EscapeText(text, zentor::TextForm::kEscaped, zentor::Brackets::kEscaped, room));
        const std::string authors = ZT_PLUGIN::EscapedSampleText(text);
        ASSERT_EQ(decoded(own), decoded(authors)) << text;
        ASSERT_EQ(zentor::EscapeText(authors, zentor::TextForm::kCompleted, zentor::Brackets::kEscaped, room), authors);
    }
}

}  // namespace zentor_test
