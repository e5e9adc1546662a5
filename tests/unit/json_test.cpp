// JSON texts: what becomes of them, what is refused and where, and how they are walked.
#include <gtest/gtest.h>

#include <functional>

#include "conversion/json/json_converter.h"
#include "conversion/json/json_text.h"
#include "failure.h"
#include "written_document.h"

namespace zentor_test {

namespace {

struct Converted {
    std::string failure;  // code, byte offset and line; empty for none
    std::string text;     // of the document; empty for none
};

Converted Convert(const std::string& json) {
    const TestFolder folder;
    const std::string path = folder / "d.vkjson";
    const std::string input = folder.Write("in.json", json);
    const std::uint64_t id = OpenStream(std::make_unique<DocumentWriter>(path));
    Converted converted;
    try {
        EXPECT_TRUE(JsonConverter({input, input, id}).Convert());
        converted.text = ReadWhole(path);
    } catch (const ns_sensor::ZT_Exception& failure) {
        converted.failure = std::to_string(failure.code()) + " at " + std::to_string(failure.extra1()) + ", line " +
                            std::to_string(failure.extra2());
    }
    CloseStream(id);
    EXPECT_EQ(folder.FileCount(), converted.failure.empty() ? 2U : 1U) << json;
    return converted;
}

void ReplaceAll(std::string& text, const std::string& from, const std::string& by) {
    for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += by.size()) {
        text.replace(at, from.size(), by);
    }
}

// The outline of a document, each node as its number, its display name and its value: {0 a=1}. A document with quotes
// in its texts cannot be read, so this works on the bytes.
std::string OutlineOf(const std::string& json) {
    const Converted converted = Convert(json);
    EXPECT_EQ(converted.failure, "") << json;
    std::string text = converted.text;
    const std::string start = Json(
        "{'version':'vkjson2.0.0','dynamicSamplesPresentB':false,'creator':'com.orvane.sensor.json','dataOutline':[");
    EXPECT_TRUE(text.starts_with(start) && text.ends_with("]}")) << text;
    if (text.size() < start.size() + 2) return {};
    text = text.substr(start.size(), text.size() - start.size() - 2);
    ReplaceAll(text, Json("'objectType':'dataStatic','matchName':'matchName"), "");
    ReplaceAll(text, Json("'objectType':'dataGroup','matchName':'matchName"), "");
    ReplaceAll(text,
               Json("','dataType':{'type':'string','paddedStringProperties':{'maxDigitsInStrLength':0,'maxLen':0,"
                    "'eventMarkerB':false}},'value':"),
               "=");
    ReplaceAll(text, Json("','dataType':{'type':'boolean'},'value':"), "=");
    const std::string numberEnd = Json("}}}},'value':");
    for (std::size_t at = 0; (at = text.find(Json("','dataType':{'type':'number'"), at)) != std::string::npos;) {
        text.replace(at, text.find(numberEnd, at) + numberEnd.size() - at, "=");
    }
    ReplaceAll(text, Json("','displayName':'"), " ");
    ReplaceAll(text, Json("','children':"), " ");
    return text;
}

std::string Repeated(const std::string& text, std::size_t count) {
    std::string result;
    for (std::size_t k = 0; k < count; ++k) result += text;
    return result;
}

template <std::size_t N>
std::string WithNull(const char (&text)[N]) {
    return {text, N - 1};
}

}  // namespace

TEST(Json, WhatBecomesOfATexts) {
    const std::pair<std::string, std::string> cases[] = {
        // Nesting, names and numbers of nodes.
        {R"({"a":1,"b":null})", "{0 a=1}"},
        {R"(["x","y","z"])", R"({0 0="x"},{1 1="y"},{2 2="z"})"},
        {R"({"o":{"a":true,"b":[false]},"c":2})", "{0 o [{1 a=true},{2 b [{3 0=false}]}]},{4 c=2}"},
        {R"([null,1,null,[null],{"n":null},2])", "{0 1=1},{1 3 []},{2 4 []},{3 5=2}"},
        {R"([[1,[2,[]],3],4])", "{0 0 [{1 0=1},{2 1 [{3 0=2},{4 1 []}]},{5 2=3}]},{6 1=4}"},
        {"{}", ""},
        {"[]", ""},
        {R"({"a":{},"b":[]})", "{0 a []},{1 b []}"},
        {R"({"a":1,"a":"x","":[],"a":{"a":2}})", R"({0 a=1},{1 a="x"},{2  []},{3 a [{4 a=2}]})"},
        {R"([0,0,0,0,0,0,0,0,0,0,[1],0])",
         "{0 0=0},{1 1=0},{2 2=0},{3 3=0},{4 4=0},{5 5=0},{6 6=0},{7 7=0},{8 8=0},{9 9=0},{10 10 [{11 0=1}]},"
         "{12 11=0}"},
        // White space and marks.
        {" \t\r\n{ \n\"a\" :\t1 , \"b\"\r: [ 2\n] , \"c\":\"\" }\r\n ", R"({0 a=1},{1 b [{2 0=2}]},{3 c=""})"},
        {"\xEF\xBB\xBF[1]", "{0 0=1}"},
        {"\xEF\xBB\xBF {}\n", ""},
        // Numbers.
        {"[0,-0,7,-12,1.50,-0.25,0.1]", "{0 0=0},{1 1=-0},{2 2=7},{3 3=-12},{4 4=1.5},{5 5=-0.25},{6 6=0.1}"},
        {"[1e2,1E+2,25e-1,0e5,-0.0,1.5e20]", "{0 0=100},{1 1=100},{2 2=2.5},{3 3=0},{4 4=-0},{5 5=1.5e+2}"},
        {"[12345678901234567890,9007199254740993,123456789012345678]",
         "{0 0=1.234567890123457e+19},{1 1=9007199254740992},{2 2=1.234567890123457e+17}"},
        {"[98.3333,98.33329999999999,5e-324,1.797693134862315e308]",
         "{0 0=98.33329999999999},{1 1=98.33329999999999},{2 2=4.940656458412465e-324},{3 3=1.797693134862315e+308}"},
        {"[1e-400,-1e-400,0." + std::string(400, '1') + "]", "{0 0=0},{1 1=-0},{2 2=0.1111111111111111}"},
        {"[" + std::string(308, '9') + "]", "{0 0=1e+308}"},
        // Texts go out as they are, escapes decoded.
        {R"(["\"\\\/\b\f\n\r\t"])", "{0 0=\"\"\\/\b\f\n\r\t\"}"},
        {R"(["\u0041\u00e9\u20AC\ud83d\uDE00\u007f"])", "{0 0=\"A\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80\x7F\"}"},
        {R"(["a\u0000b","\\ud800","\\\\udc00"])", WithNull("{0 0=\"a\0b\"},{1 1=\"\\ud800\"},{2 2=\"\\\\udc00\"}")},
        {R"({"\u00e9\/\"":"\u2028"})", "{0 \xC3\xA9/\"=\"\xE2\x80\xA8\"}"},
        {"[\"\xC3\xA9\xED\x9F\xBF\xEE\x80\x80\xF4\x8F\xBF\xBF\x7F'\"]",
         "{0 0=\"\xC3\xA9\xED\x9F\xBF\xEE\x80\x80\xF4\x8F\xBF\xBF\x7F'\"}"},
        {R"(["{]},:[","null","1"])", R"({0 0="{]},:["},{1 1="null"},{2 2="1"})"},
        {"[\"" + std::string(100000, 'x') + "\"]", "{0 0=\"" + std::string(100000, 'x') + "\"}"},
    };
    for (const auto& [json, outline] : cases) EXPECT_EQ(OutlineOf(json), outline) << json;
}

TEST(Json, WholeDocument) {
    EXPECT_EQ(Convert(R"({"t":-2.5,"s":["on"]})").text,
              Json("{'version':'vkjson2.0.0','dynamicSamplesPresentB':false,'creator':'com.orvane.sensor.json',"
                   "'dataOutline':[{'objectType':'dataStatic','matchName':'matchName0','displayName':'t',"
                   "'dataType':{'type':'number','numberStringProperties':{'pattern':{'isSigned':true,"
                   "'digitsDecimal':1,'digitsInteger':1},'range':{'occurring':{'min':-2.5,'max':-2.5},"
                   "'legal':{'min':-2.5,'max':-2.5}}}},'value':-2.5},{'objectType':'dataGroup',"
                   "'matchName':'matchName1','displayName':'s','children':[{'objectType':'dataStatic',"
                   "'matchName':'matchName2','displayName':'0','dataType':{'type':'string',"
                   "'paddedStringProperties':{'maxDigitsInStrLength':0,'maxLen':0,'eventMarkerB':false}},"
                   "'value':'on'}]}]}"));
}

// The fault of each text is where the "@" is.
TEST(Json, WhatIsRefused) {
    const std::string texts[] = {
        // What holds no values.
        "@",
        " \n@",
        "\xEF\xBB\xBF@",
        "@1",
        "@\"s\"",
        "\n @true",
        "@null",
        "@-1.5",
        "@x",
        // Structure.
        "[1@",
        "[@",
        "{\"a\":1@",
        "{@",
        "{\"a\"@}",
        "{\"a\":@}",
        "{@a:1}",
        "{@1:1}",
        "{\"a\":1,@}",
        "[1,@]",
        "[@,1]",
        "[1 @2]",
        "[1]@]",
        "[1] @x",
        "{}@{}",
        "[@}",
        "{\"a\":[1@}]",
        "[1@:2]",
        // What other notations have.
        "[1@/*c*/]",
        "@//c\n[]",
        "[@'a']",
        "[@NaN]",
        "[-@Infinity]",
        "[@+1]",
        "[@.5]",
        "[1.@]",
        "[1.@e1]",
        "[1e@]",
        "[1e+@]",
        "[0@1]",
        "[0@x10]",
        "[-@]",
        "[tru@]",
        "[@True]",
        "[n@ll]",
        "[fals@",
        "[1,5,@]",
        // Strings.
        "[\"abc@",
        "[\"a@\x01\"]",
        "[\"a@\n\"]",
        WithNull("[\"a@\0\"]"),
        "[\"@\\x41\"]",
        "[\"@\\u12g4\"]",
        "[\"@\\",
        "[\"@\\ud800\"]",
        "[\"@\\ud800\\u0041\"]",
        "[\"a@\\udc00\"]",
        "[\"\\ud83d\\ude00@\\udc00\"]",
        "[\"\\\\\\n@\\uDFFF\"]",
        "{\"k@\\udc00\":1}",
        // Bytes that are no UTF-8.
        "[\"@\xFF\"]",
        "[\"a@\xC3(\"]",
        "[\"@\xC0\xAF\"]",
        "[\"@\xED\xA0\x80\"]",
        "[\"@\xF4\x90\x80\x80\"]",
        "[\"@\xE2\x82\"]",
        "{\"@\xE9\":1}",
        "[@\xFF]",
        WithNull("@\xFF\xFE[\0]\0"),
        "\xEF\xBB\xBF@\xEF\xBB\xBF[]",
        // Null bytes.
        WithNull("[1]@\0"),
        WithNull("[1]\n@\0 "),
        WithNull("[@\0]"),
        WithNull("@\0[]"),
        // Numbers that no double holds.
        "[1,\r\n@1e400]",
        "[@-1e400]",
        "[@1.7976931348623157e308]",
        "[\r@1" + std::string(400, '0') + "]",
        // Deeper than groups go.
        Repeated("[", 101) + "@[" + Repeated("]", 102),
        Repeated("{\"a\":", 101) + "@{}" + Repeated("}", 101),
        Repeated("[", 101) + "@" + Repeated("[", 1000000),
    };
    for (std::string json : texts) {
        const std::size_t place = json.find('@');
        ASSERT_NE(place, std::string::npos);
        json.erase(place, 1);
        std::size_t line = 1;
        for (std::size_t at = 0; at < place; ++at) {
            if (json[at] == '\n' || (json[at] == '\r' && json[at + 1] != '\n')) ++line;
        }
        EXPECT_EQ(Convert(json).failure, "1506 at " + std::to_string(place) + ", line " + std::to_string(line))
            << json.substr(0, 300);
    }
}

TEST(Json, AsDeepAsGroupsGo) {
    EXPECT_EQ(OutlineOf(Repeated("[", 101) + Repeated("]", 101)).substr(0, 25), "{0 0 [{1 0 [{2 0 [{3 0 [{");
    const std::string deepest = OutlineOf(Repeated("{\"a\":", 101) + "1" + Repeated("}", 101));
    EXPECT_NE(deepest.find("{99 a [{100 a=1}]}"), std::string::npos) << deepest;
}

// No cut of a text, and no other byte in one place of it, does harm.
TEST(Json, DamagedTexts) {
    const std::string good = "{\"a\":[1,-2.5e3,\"\\u00e9\\ud83d\\ude00\xC3\xA9\"],\"b\":{\"c\":true,\"d\":null}}";
    ASSERT_EQ(Convert(good).failure, "");
    for (std::size_t size = 0; size < good.size(); ++size) {
        EXPECT_EQ(Convert(good.substr(0, size)).failure.substr(0, 8), "1506 at ") << size;
    }
    std::size_t refused = 0;
    for (std::size_t at = 0; at < good.size(); ++at) {
        for (const char c : WithNull("\0\x80\xFF\"\\,[]{}:1e")) {
            std::string damaged = good;
            damaged[at] = c;
            const std::string failure = Convert(damaged).failure;
            if (!failure.empty()) ++refused;
            EXPECT_TRUE(failure.empty() || failure.starts_with("1506 at ")) << failure;
        }
    }
    EXPECT_GT(refused, good.size() * 8);
}

TEST(Json, MissingFile) {
    const TestFolder folder;
    EXPECT_EQ(FailureOf([&] { JsonText(folder / "none.json", NumberForm::kSixteenDigits); }),
              "6: Unable to open input file.");
}

namespace {

class Walk {
public:
    explicit Walk(const std::string& json)
        : text_(folder_.Write("in.json", json), NumberForm::kSixteenDigits), top(text_.MakeIterator()) {}

private:
    TestFolder folder_;
    JsonText text_;

public:
    std::shared_ptr<JsonIterator> top;
};

}  // namespace

TEST(JsonIterator, GivesKeysTypesAndValues) {
    const Walk walk(R"({"s":"a\tb","n":1e1,"t":true,"f":false,"o":{"x":1,"x":[{}]},"a":[1,[2,3],{}],"z":null})");
    JsonIterator& values = *walk.top;
    std::string text = "before";
    ASSERT_TRUE(values.HasNext());
    EXPECT_EQ(values.GetKey(), "s");
    EXPECT_EQ(values.GetType(), JsonKind::kString);
    values.GetString(text);
    EXPECT_EQ(text, "a\tb");
    values.Next();
    EXPECT_EQ(values.GetType(), JsonKind::kNumber);
    EXPECT_EQ(values.GetNumber(), 10);
    EXPECT_EQ(values.GetNumberText(), "1e1");
    values.Next();
    EXPECT_TRUE(values.GetBool());
    values.Next();
    EXPECT_FALSE(values.GetBool());
    values.Next();
    EXPECT_EQ(values.GetType(), JsonKind::kObject);
    EXPECT_EQ(values.GetSize(), 2U);
    const auto members = values.GetObjectIterator();
    members->Next();
    EXPECT_EQ(members->GetKey(), "x");
    EXPECT_EQ(members->GetType(), JsonKind::kArray);
    values.Next();  // an object that has not been walked to its end
    EXPECT_EQ(values.GetKey(), "a");
    EXPECT_EQ(values.GetSize(), 3U);
    const auto elements = values.GetArrayIterator();
    elements->Next();
    EXPECT_EQ(elements->GetKey(), "1");
    elements->Next();  // nor this array
    EXPECT_EQ(elements->GetType(), JsonKind::kObject);
    EXPECT_EQ(elements->GetSize(), 0U);
    EXPECT_FALSE(elements->GetObjectIterator()->HasNext());
    elements->Next();
    EXPECT_FALSE(elements->HasNext());
    values.Next();
    EXPECT_EQ(values.GetKey(), "z");
    EXPECT_EQ(values.GetType(), JsonKind::kNull);
    values.Next();
    EXPECT_FALSE(values.HasNext());
}

TEST(JsonIterator, OtherTypesThanAskedForAreAssertions) {
    const auto expectFailures = [](JsonIterator& values, JsonKind type) {
        std::string text;
        const std::pair<JsonKind, std::function<void()>> calls[] = {
            {JsonKind::kString, [&] { values.GetString(text); }},
            {JsonKind::kNumber, [&] { values.GetNumber(); }},
            {JsonKind::kNumber, [&] { values.GetNumberText(); }},
            {JsonKind::kBoolean, [&] { values.GetBool(); }},
            {JsonKind::kArray, [&] { values.GetArrayIterator(); }},
            {JsonKind::kObject, [&] { values.GetObjectIterator(); }},
        };
        for (const auto& [asked, call] : calls) {
            const bool fits = asked == type && values.HasNext();
            EXPECT_EQ(FailureOf(call), fits ? "" : "19: Assertion failure:RapidJSON.");
        }
    };
    const Walk walk(R"(["s",1,true,[],{},null])");
    const JsonKind types[] = {JsonKind::kString, JsonKind::kNumber, JsonKind::kBoolean,
                              JsonKind::kArray,  JsonKind::kObject, JsonKind::kNull};
    for (const JsonKind type : types) {
        EXPECT_EQ(walk.top->GetType(), type);
        expectFailures(*walk.top, type);
        walk.top->Next();
    }
    expectFailures(*walk.top, JsonKind::kNull);
    EXPECT_EQ(FailureOf([&] { static_cast<void>(walk.top->GetSize()); }), "19: Assertion failure:RapidJSON.");
}

#if !defined(_WIN32)  // where a mapped file cannot be written to
// A file that somebody writes to while it is converted.
TEST(JsonIterator, TextThatChangesMeanwhile) {
    const std::string good = R"([{"a":1},["x"],true])";
    for (const char c : {' ', '[', '"', '\\', 'x', '1', '\0'}) {
        for (std::size_t at = 0; at < good.size(); ++at) {
            const TestFolder folder;
            const std::string path = folder.Write("in.json", good);
            JsonText text(path, NumberForm::kSixteenDigits);
            std::fstream(PathOf(path), std::ios::in | std::ios::out | std::ios::binary)
                .seekp(static_cast<std::streamoff>(at))
                .write(std::string(good.size() - at, c).data(), static_cast<std::streamsize>(good.size() - at));
            const std::string failure = FailureOf([&] {
                std::function<void(JsonIterator&)> walk = [&](JsonIterator& values) {
                    for (; values.HasNext(); values.Next()) {
                        std::string string;
                        if (values.GetType() == JsonKind::kString) values.GetString(string);
                        if (values.GetType() == JsonKind::kNumber) values.GetNumber();
                        if (values.GetType() == JsonKind::kArray) walk(*values.GetArrayIterator());
                        if (values.GetType() == JsonKind::kObject) walk(*values.GetObjectIterator());
                    }
                };
                walk(*text.MakeIterator());
            });
            EXPECT_TRUE(failure.starts_with("1506: ")) << failure << " at " << at << c;
        }
    }
}
#endif

}  // namespace zentor_test
