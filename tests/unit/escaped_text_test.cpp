// Texts of any bytes as JSON strings, for faithful documents.
#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include <random>
#include <string>

#include "util/escaped_text.h"

namespace zentor {

namespace {

std::string Escaped(std::string_view text, TextForm form, Brackets brackets = Brackets::kPlain) {
    std::string room;
    return std::string(EscapeText(text, form, brackets, room));
}

}  // namespace

TEST(EscapedText, Cases) {
    using namespace std::string_literals;
    const struct {
        std::string text;
        std::string escaped;
        std::string completed;  // where the text may have escapes
    } cases[] = {
        {"", "", ""},
        {"plain text of some length, [1] {2}", "plain text of some length, [1] {2}",
         "plain text of some length, [1] {2}"},
        {R"(say "hi")", R"(say \"hi\")", R"(say \"hi\")"},
        {R"(C:\temp\new)", R"(C:\\temp\\new)", R"(C:\temp\new)"},
        {R"(C:\data\x)", R"(C:\\data\\x)", R"(C:\\data\\x)"},
        {R"(\")", R"(\\\")", R"(\")"},
        {R"(\u00e9\u00g9\u00)", R"(\\u00e9\\u00g9\\u00)", R"(\u00e9\\u00g9\\u00)"},
        {R"(at the end: \)", R"(at the end: \\)", R"(at the end: \\)"},
        {"\b\f\n\r\t\0\x1F\x7F"s, "\\b\\f\\n\\r\\t\\u0000\\u001F\x7F", "\\b\\f\\n\\r\\t\\u0000\\u001F\x7F"},
        {"na\u00efve \u20ac \U0001F600", "na\u00efve \u20ac \U0001F600", "na\u00efve \u20ac \U0001F600"},
        {"22 \xB0"
         "C, \x80",
         "22 \u00b0C, \u20ac", "22 \u00b0C, \u20ac"},
        {"\x81\x8D\x8F\x90\x9D\x9F", "\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\u0178", "\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\u0178"},
        // overlong, half a character, a surrogate, beyond Unicode
        {"\xC0\xAF", "\u00C0\u00AF", "\u00C0\u00AF"},
        {"\xE2\x82", "\u00E2\u201A", "\u00E2\u201A"},
        {"\xED\xA0\x80", "\u00ED\u00A0\u20AC", "\u00ED\u00A0\u20AC"},
        {"\xF4\x90\x80\x80", "\u00F4\uFFFD\u20AC\u20AC", "\u00F4\uFFFD\u20AC\u20AC"},
        {R"(kept"},{"objectType":"dataStatic")", R"(kept\"},{\"objectType\":\"dataStatic\")",
         R"(kept\"},{\"objectType\":\"dataStatic\")"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Escaped(c.text, TextForm::kAsItIs, Brackets::kEscaped), c.text);
        EXPECT_EQ(Escaped(c.text, TextForm::kEscaped), c.escaped);
        EXPECT_EQ(Escaped(c.text, TextForm::kCompleted), c.completed);
    }
    EXPECT_EQ(Escaped("]a[0]", TextForm::kEscaped, Brackets::kEscaped), R"(\u005Da\u005B0\u005D)");
}

// Whatever the bytes are, a parser of JSON takes them; UTF-8 comes back as it was.
TEST(EscapedText, IsJsonForAnotherParser) {
    std::mt19937 random(5);
    const std::string_view alphabet = "ab 0\"\\/{}[],:u\n\x01\x7F\xC3\xA9\xE2\x82\xAC\xFF\x80";
    for (int k = 0; k < 50000; ++k) {
        std::string text;
        for (std::size_t length = random() % 20; text.size() < length;) text += alphabet[random() % alphabet.size()];
        bool isUtf8 = true;
        for (std::size_t at = 0; at < text.size() && isUtf8;) {
            const std::size_t length = Utf8Length(std::string_view(text).substr(at));
            isUtf8 = length != 0;
            at += length;
        }
        for (const TextForm form : {TextForm::kEscaped, TextForm::kCompleted}) {
            for (const Brackets brackets : {Brackets::kPlain, Brackets::kEscaped}) {
                rapidjson::Document document;
                const std::string json = '"' + Escaped(text, form, brackets) + '"';
                document.Parse<rapidjson::kParseValidateEncodingFlag>(json.data(), json.size());
                ASSERT_FALSE(document.HasParseError()) << json;
                if (!isUtf8 || form == TextForm::kCompleted) continue;
                ASSERT_EQ(std::string(document.GetString(), document.GetStringLength()), text);
            }
        }
    }
}

}  // namespace zentor
