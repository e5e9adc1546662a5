// The top level of documents, and the tokens of their values.
#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

#include "documents.h"
#include "reader/bracket_search.h"
#include "util/json_cursor.h"

namespace zentor_test {

using namespace zentor;

namespace {

constexpr auto kV1 = ParserChoice::kVersion1;
constexpr auto kV2 = ParserChoice::kVersion2;

// With "@" where the failure is.
using Failures = std::vector<std::pair<std::string, std::string>>;

void ExpectFailures(ParserChoice choice, const Failures& cases) {
    for (const auto& [text, failure] : cases) ExpectFailure(text, choice, failure);
}

std::string InvalidJson(const std::string& key) { return "32: Parsing error:" + key + ", Invalid JSON."; }
std::string NoColon(const std::string& key) {
    return "32: Unable to find Colon(:) in between key and value for property:" + key + ".";
}
std::string NoComma(const std::string& key) {
    return "32: Unable to find Comma or Closing bracket after property:" + key + ".";
}
std::string NoValueQuotes(const std::string& key) {
    return "32: Unable to find enclosing quotes for property value:" + key + ".";
}
std::string NotOfType(const std::string& key, const std::string& type) {
    return "43: Invalid " + key + " type, expected type:\"JSON " + type + "\".";
}
std::string Refused(const std::string& key) {
    return "30: Invalid top level property. \"" + key +
           "\" not defined as a top level property in VKJSON schema version 2.0.0.";
}
std::string Lacking(const std::string& keys) { return "32: Unable to find mandatory properties : " + keys + "."; }
std::string OnlyIf(const std::string& key, const std::string& other, const std::string& value) {
    return "46: " + key + " can be present if and only if " + other + " is set to " + value + ".";
}
std::string Before(const std::string& first, const std::string& key) {
    return "31: " + first + " must be present before " + key + " in VKJSON file.";
}

const std::string kNoOpening = "32: Unable to find VKJSON opening '{'.";
const std::string kNoKeyQuotes = "32: Unable to find enclosing quotes for Vkjson key.";
const std::string kTooDeep = "32: ZT does not support VKJSON dataGroup with nesting more than 100";

// A good document of version 2 with a member that means nothing.
std::string WithIgnored(const std::string& value) {
    return Outline2(R"({"objectType":"dataGroup","displayName":"","matchName":"","children":[],"x":)" + value + "}");
}

// What a number in a document is read as.
double NumberFrom(const std::string& text) {
    const std::string document = Outline2(StaticNode("n", R"("number",)" + kNumberProperties, text));
    return boost::get<double>(OpenText(document, kV2).Static(0).value);
}

}  // namespace

TEST(Parser, TopLevelOfAnyVersion) {
    for (const ParserChoice choice : {kV1, kV2, ParserChoice::kProbe}) {
        ExpectFailures(choice, {{"@", kNoOpening},
                                {" \t\r\n@", kNoOpening},
                                {"@[]", kNoOpening},
                                {"@\xEF\xBB\xBF{}", kNoOpening},
                                {"@\v{}", kNoOpening},
                                {"{@", InvalidJson("^1")},
                                {"{ \n@", InvalidJson("^1")},
                                {"{@'version':1}", kNoKeyQuotes},
                                {R"({@"version)", kNoKeyQuotes},
                                {R"({@"version\":)", kNoKeyQuotes},
                                {R"({"version"@)", NoColon("version")},
                                {R"({"version" @,"creator":"a"})", NoColon("version")},
                                {R"({@"other":1})", "32: Invalid VKJSON key : other."},
                                {R"({@"Version":"a"})", "32: Invalid VKJSON key : Version."},
                                {R"({@"":1})", "32: Invalid VKJSON key : ."},
                                {R"({"version":@1})", NoValueQuotes("version")},
                                {R"({"version":@)", NoValueQuotes("version")},
                                {R"({"creator": @"a})", NoValueQuotes("creator")},
                                {R"({"creator":@null})", NoValueQuotes("creator")},
                                {R"({"version":"a"@)", InvalidJson("\"version\"")},
                                {R"({"version":"a",@)", InvalidJson("^1")},
                                {R"({"version":"a"@;"creator":"a"})", NoComma("version")},
                                {R"({"version":"a"@]})", NoComma("version")},
                                {R"({"version":"a",@})", kNoKeyQuotes},
                                {R"({"creator":"a",@"creator":"a"})", InvalidJson("\"creator\"")},
                                {R"({"dataOutline":@{}})", NotOfType("dataOutline", "Array")},
                                {R"({"dataOutline":@)", InvalidJson("\"dataOutline\"")}});
    }
}

TEST(Parser, KeysOfVersion1) {
    const std::string utc = R"("utcInfo":{"precisionLength":0,"isGMT":false})";
    const std::string timecode = R"("timecodeInfo":{"frameRate":{"value":25,"scale":1},"dropFrame":false})";
    const std::string utcAlone = OnlyIf("utcInfo", "useTimecodeB", "false");
    const std::string timecodeAlone = OnlyIf("timecodeInfo", "useTimecodeB", "true");
    ExpectFailures(
        kV1,
        {{R"({"useTimecodeB":false,)" + utc + R"(,"dataOutline":[]})", ""},
         {" {\n\"dataOutline\" :\t[ ] ,\r" + utc + " , \"useTimecodeB\" : false } \n", ""},
         {"{" + timecode + R"(,"videoSyncTimeList":[],"dataDynamicSamples":[],"dataOutline":[],"useTimecodeB":true})",
          ""},
         {"{" + utc + R"(,"useTimecodeB":false,"dataOutline":[]} @x)", InvalidJson("^1")},
         {"{" + utc + R"(,"useTimecodeB":false,"dataOutline":[]}@})", InvalidJson("^1")},
         {"{@}", Lacking("useTimecodeB, dataOutline")},
         {R"({"dataOutline":[]@})", Lacking("useTimecodeB")},
         {R"({"useTimecodeB":false@})", Lacking("utcInfo, dataOutline")},
         {R"({"dataOutline":[],"useTimecodeB":true@}x)", Lacking("timecodeInfo")},
         {"{" + utc + R"(,"dataOutline":[]@})", Lacking("useTimecodeB")},
         {R"({"useTimecodeB":true,@)" + utc + "}", utcAlone},
         {"{@" + utc + R"(,"useTimecodeB":true})", utcAlone},
         {R"({"useTimecodeB":false,@)" + timecode + "}", timecodeAlone},
         {"{@" + timecode + R"(,"useTimecodeB":false})", timecodeAlone},
         {R"({"useTimecodeB":@1})", NotOfType("useTimecodeB", "Boolean")},
         {R"({"useTimecodeB":tru@)", InvalidJson("\"useTimecodeB\"")},
         {R"({"useTimecodeB":@tru})", NotOfType("useTimecodeB", "Boolean")},
         {R"({"useTimecodeB":true@r})", NoComma("useTimecodeB")},
         {R"({"useTimecodeB":true,@"useTimecodeB":true})", InvalidJson("\"useTimecodeB\"")},
         {R"({"utcInfo":@[]})", NotOfType("utcInfo", "Object")},
         {R"({"timecodeInfo":@"a"})", NotOfType("timecodeInfo", "Object")},
         {R"({"videoSyncTimeList":@{}})", NotOfType("videoSyncTimeList", "Array")},
         {R"({"dataDynamicSamples":@{}})", NotOfType("dataDynamicSamples", "Array")},
         {R"({"dataDynamicSamples":@)", InvalidJson("\"dataDynamicSamples\"")},
         {R"({@"dynamicSamplesPresentB":true})", Refused("dynamicSamplesPresentB")},
         {R"({@"dynamicDataInfo":{}})", Refused("dynamicDataInfo")}});
}

TEST(Parser, KeysOfVersion2) {
    const std::string info = R"("dynamicDataInfo":{)" + kUtcTimes + "}";
    const std::string present = R"({"dynamicSamplesPresentB":true,)";
    const std::string absent = R"({"dynamicSamplesPresentB":false,)";
    ExpectFailures(kV2, {{Outline2(""), ""},
                         {R"({"dataOutline":[],"creator":"","dynamicSamplesPresentB":false,"version":""})", ""},
                         {R"({"data\u004futline":[],"dynamicSamplesPresentB":false,"version":""})", ""},
                         {present + info + R"(,"dataDynamicSamples":[],"dataOutline":[],"version":"vkjson2.0.0"})", ""},
                         {Outline2("") + "@,", InvalidJson("^1")},
                         {"{@}", Lacking("version, dataOutline, dynamicSamplesPresentB")},
                         {R"({"version":"a","dynamicSamplesPresentB":true@})", Lacking("dataOutline, dynamicDataInfo")},
                         {R"({"dataOutline":[],"dynamicSamplesPresentB":true@})", Lacking("version, dynamicDataInfo")},
                         {R"({@"useTimecodeB":true})", Refused("useTimecodeB")},
                         {R"({@"utcInfo":{}})", Refused("utcInfo")},
                         {R"({@"timecodeInfo":{}})", Refused("timecodeInfo")},
                         {R"({@"videoSyncTimeList":[]})", Refused("videoSyncTimeList")},
                         {R"({"dynamicSamplesPresentB":@0})", NotOfType("dynamicSamplesPresentB", "Boolean")},
                         {present + R"("dynamicDataInfo":@[]})", NotOfType("dynamicDataInfo", "Object")},
                         {present + info + R"(,"dataDynamicSamples":@""})", NotOfType("dataDynamicSamples", "Array")},
                         {present + info + ",@" + info + "}", InvalidJson("\"dynamicDataInfo\"")},
                         {"{@" + info + "}", Before("dynamicSamplesPresentB", "dynamicDataInfo")},
                         {R"({@"dataDynamicSamples":[]})", Before("dynamicSamplesPresentB", "dataDynamicSamples")},
                         {present + R"(@"dataDynamicSamples":[]})", Before("dynamicDataInfo", "dataDynamicSamples")},
                         {absent + "@" + info + "}", OnlyIf("dynamicDataInfo", "dynamicSamplesPresentB", "true")},
                         {absent + R"(@"dataDynamicSamples":[]})",
                          OnlyIf("dataDynamicSamples", "dynamicSamplesPresentB", "true")}});
}

TEST(Parser, ProbeLooksAtTheFirstPropertyOnly) {
    const std::string v1 = kUtcTimes + R"(,"dataOutline":[]})";
    const std::string v2 = R"("dynamicSamplesPresentB":false,"dataOutline":[]})";
    ExpectFailures(ParserChoice::kProbe,
                   {{" { \"version\"\n: \"vkjson2.0.0\" ," + v2, ""},
                    {R"({"creator":"","version":"vkjson2.0.0",@)" + v2, Refused("dynamicSamplesPresentB")},
                    {R"({"version":"vkjson2.0.1",@)" + v2, Refused("dynamicSamplesPresentB")},
                    {R"({"version":"vkjson2.0.0",@)" + v1, Refused("useTimecodeB")},
                    {R"({"version":"vkjson1.0.0",)" + v1, ""},
                    {"{" + v1, ""}});
}

TEST(Parser, ValuesInTheOutline) {
    const Failures cases = {{R"( { "a" : [ 1 , true , "" , { } , [ ] ] , "b":false } )", ""},
                            {R"({"x":{"":"]}"},"x":[[]]})", ""},
                            {"@null", NotOfType("dataOutline::x", "Number")},
                            {"@.5", NotOfType("dataOutline::x", "Number")},
                            {"@+5", NotOfType("dataOutline::x", "Number")},
                            {"@tRue", NotOfType("dataOutline::x", "Boolean")},
                            {"@True", NotOfType("dataOutline::x", "Number")},
                            {"@", NotOfType("dataOutline::x", "Number")},
                            {"-@", NotOfType("dataOutline::x", "Number")},
                            {"-@.5", NotOfType("dataOutline::x", "Number")},
                            {"-@x", NotOfType("dataOutline::x", "Number")},
                            {"1.@", "32: Missing fraction part in number"},
                            {"1.@e5", "32: Missing fraction part in number"},
                            {"1e@", "32: Miss exponent in number"},
                            {"-0.5E+@", "32: Miss exponent in number"},
                            {"1@x", NoComma("dataOutline::x")},
                            {"0@1", NoComma("dataOutline::x")},
                            {"1 @2", NoComma("dataOutline::x")},
                            {"false@y", NoComma("dataOutline::x")},
                            {R"("a"@"b")", NoComma("dataOutline::x")},
                            {R"({"a":1@])", NoComma("dataOutline::x::a")},
                            {R"({"a":{"b":1},"c":[{"d":2@;}]})", NoComma("dataOutline::x::c::d")},
                            {"[1@}]", NoComma("dataOutline::x")},
                            {R"([1,@])", NotOfType("dataOutline::x", "Number")},
                            {R"({"a":1,@})", kNoKeyQuotes},
                            {"{@a:1}", kNoKeyQuotes},
                            {R"({"a"@=1})", NoColon("dataOutline::x::a")},
                            {"@" + std::string(310, '9'), "32: Number too big to be stored in double."},
                            {"@2" + std::string(308, '0'), "32: Number too big to be stored in double."},
                            {"@1" + std::string(309, '0') + "e-200", "32: Number too big to be stored in double."},
                            {"1" + std::string(308, '0') + ".5", ""},
                            {"@1e309", "32: Number too big to be stored in double."},
                            {"@-1.8e+308", "32: Number too big to be stored in double."},
                            {"@1e99999999999999999999", "32: Number too big to be stored in double."},
                            {"@0.001e312", "32: Number too big to be stored in double."}};
    for (const auto& [value, failure] : cases) ExpectFailure(WithIgnored(value), kV2, failure);
    ExpectFailure(Outline2("").substr(0, Outline2("").size() - 2) + "@", kV2, InvalidJson("\"dataOutline\""));
    const std::string open = R"({"dataOutline":[{"x":)";
    ExpectFailures(kV2, {{open + "@", InvalidJson("\"dataOutline::x\"")},
                         {open + "@\"", NoValueQuotes("dataOutline::x")},
                         {open + R"(@"a\"})", NoValueQuotes("dataOutline::x")},
                         {open + "1@", NoComma("dataOutline::x")},
                         {open + R"({@"a)", kNoKeyQuotes},
                         {open + R"({"a"@)", NoColon("dataOutline::x::a")}});
}

TEST(Parser, NumbersAreExact) {
    const std::pair<std::string, double> cases[] = {{"0", 0},
                                                    {"-0", -0.0},
                                                    {"-0.0e5", -0.0},
                                                    {"0e99999999999999999999", 0},
                                                    {"123456789012345", 123456789012345},
                                                    {"-999999999999999", -999999999999999},
                                                    {"9007199254740993", 9007199254740992},
                                                    {"18446744073709551615", 18446744073709551616.0},
                                                    {"0.1", 0.1},
                                                    {"1E2", 100},
                                                    {"1.5e+2", 150},
                                                    {"-25e-2", -0.25},
                                                    {"1e+00000000000000000000000000003", 1000},
                                                    {"0.001e311", 1e308},
                                                    {"0." + std::string(400, '0') + "1e401", 1},
                                                    {"0." + std::string(1000, '3'), 1.0 / 3},
                                                    {std::string(308, '9'), 1e308},
                                                    {"1.7976931348623157e308", std::numeric_limits<double>::max()},
                                                    {"4.9e-324", std::numeric_limits<double>::denorm_min()},
                                                    {"2.2250738585072011e-308", 2.2250738585072011e-308},
                                                    {"1e-400", 0},
                                                    {"-1e-99999999999999999999", -0.0}};
    for (const auto& [text, value] : cases) {
        double read = std::numeric_limits<double>::quiet_NaN();
        EXPECT_EQ(FailureOf([&] { read = NumberFrom(text); }), "") << text;
        EXPECT_EQ(read, value) << text;
        EXPECT_EQ(std::signbit(read), std::signbit(value)) << text;
    }
}

TEST(Parser, EscapesInStrings) {
    using namespace std::string_literals;
    const std::pair<std::string, std::string> cases[] = {{R"()", ""},
                                                         {R"(a\"b\\c\/d)", R"(a"b\c/d)"},
                                                         {R"(\b\f\n\r\t)", "\b\f\n\r\t"},
                                                         {R"(\u0041\u00e9\u20AC\u0000.)", "A\u00E9\u20AC\0."s},
                                                         {R"(\uD83D\ude00)", "\U0001F600"},
                                                         {R"(\ud800\udc00\uDBFF\uDFFF)", "\U00010000\U0010FFFF"},
                                                         {R"(\uD83D \uDE00)", R"(\uD83D \uDE00)"},
                                                         {R"(\uD83D\u0041)", R"(\uD83DA)"},
                                                         {R"(\uD83D\uD83D\uDE00)", "\\uD83D\U0001F600"},
                                                         {R"(\q\u12g4\u12)", R"(\q\u12g4\u12)"},
                                                         {R"(C:\data\x)", R"(C:\data\x)"},
                                                         {R"(\\u0041)", R"(\u0041)"},
                                                         {"tab\tand\xFFmore\x80\n", "tab\tand\xFFmore\x80\n"}};
    for (const auto& [raw, text] : cases) {
        const std::string document = Replaced(Document2(), R"("creator":"me")", "\"creator\":\"" + raw + "\"");
        const std::string outline = Replaced(document, "Speed", raw);
        const OpenText read(outline, kV2);
        EXPECT_EQ(read->info.creator, text);
        EXPECT_EQ(read.Child(read.Find("[0]")).displayName, text);
    }
    // Names of properties are strings, too.
    ExpectFailure(Replaced(Document2(), "\"interpolation\"", R"("inter\u0070olation")"), kV2, "");
}

TEST(Parser, Nesting) {
    for (const ParserChoice choice : {kV1, kV2}) {
        const auto nested = [&](int groups, const std::string& mark) {
            std::string nodes = choice == kV1 ? StaticNode("n", R"("numberString",)" + kNumberProperties, "1") : "";
            for (int i = groups; i != 0; --i)
                nodes = (i == 101 ? mark : "") + GroupNode("g" + std::to_string(i), nodes);
            return choice == kV2 ? Outline2(nodes) : "{" + kUtcTimes + R"(,"dataOutline":[)" + nodes + "]}";
        };
        ExpectFailure(nested(100, ""), choice, "");
        ExpectFailure(nested(101, "@"), choice, kTooDeep);
    }
    const auto brackets = [](std::size_t count) { return std::string(count, '['); };
    // The outline and the node are two levels themselves.
    ExpectFailure(WithIgnored(brackets(398) + std::string(398, ']')), kV2, "");
    ExpectFailure(WithIgnored(brackets(398) + "@[" + std::string(399, ']')), kV2, kTooDeep);
    ExpectFailure(R"({"dataOutline":)" + brackets(400) + "@" + brackets(1000000), kV2, kTooDeep);
    ExpectFailure(R"({"dataOutline":)" + brackets(400) + "@{", kV2, kTooDeep);
}

TEST(Parser, SamplesAreSkippedByTheirSquareBrackets) {
    const Failures cases = {
        {"][][\"}}]}", ""}, {"}{][\"}}]}", ""}, {R"(\[] "}}]})", ""}, {R"(ab] "}}]})", ""}, {R"(a[b "}}]})", ""}};
    for (const auto& [text, failure] : cases) {
        ExpectFailure(Replaced(Document2(), R"([a] "}}]})", text), kV2, failure);
    }
    // Where the records are not those of a set, all brackets count.
    const std::string gap = Replaced(Document2(), R"("samples":[{)", R"("samples":[ {)");
    ExpectFailure(Replaced(gap, R"([a] "}}]})", R"(ab] "}}]@})"), kV2, Lacking("dataOutline"));
    ExpectFailure(Replaced(gap, "[a]", "a[b") + "@", kV2, InvalidJson("\"dataDynamicSamples\""));
    ExpectFailure(Replaced(Document2(), R"(,"creator")", R"(@x,"creator")"), kV2, NoComma("dataDynamicSamples"));
    const std::string text = Document2();
    const OpenText read(text, kV2);
    EXPECT_EQ(read->info.creator, "me");
    EXPECT_EQ(read.index().ChildrenOf(kRootNode).count, 4u);
}

TEST(Parser, BracketsAreCountedLikeOneByOne) {
    std::mt19937 random(1);
    for (int run = 0; run < 2000; ++run) {
        std::string text(1 + random() % 400, ' ');
        const auto sparse = 2 + random() % 200;
        for (char& c : text) c = random() % sparse > 1 ? 'a' : random() % 2 == 0 ? '[' : ']';
        const std::size_t open = 1 + random() % 40;
        std::size_t expectedDepth = open;
        std::size_t expectedEnd = 0;
        while (expectedDepth != 0 && expectedEnd != text.size()) {
            const char c = text[expectedEnd++];
            if (c == '[') ++expectedDepth;
            if (c == ']') --expectedDepth;
        }
        std::size_t depth = open;
        EXPECT_EQ(FindClosingBracket(text, depth), expectedEnd) << text;
        EXPECT_EQ(depth, expectedDepth) << text;
    }
}

TEST(Parser, LargeSamples) {
    // More than is copied at a time, with open brackets from one piece to the next.
    const std::string text = std::string(300000, '[') + std::string(300000, ']');
    const std::string widths = R"("maxDigitsInStrLength":1,"maxLen":4)";
    std::string document = Replaced(Document2(), "[a] ", text);
    document = Replaced(Replaced(document, widths, R"("maxDigitsInStrLength":6,"maxLen":600000)"), R"("length":"3")",
                        R"("length":"600000")");
    EXPECT_EQ(ParseDocument(document, kV2)->info.creator, "me");
}

TEST(Parser, FileInformation) {
    const std::unique_ptr<VkjsonDocument> timecodes = ParseDocument(Document1(kTimecodes), ParserChoice::kProbe);
    EXPECT_EQ(timecodes->info.version, "vkjson1.0.0");
    EXPECT_EQ(timecodes->info.timeMode, ZT_TIME_MODE_TIMECODE);
    EXPECT_EQ(timecodes->info.frameRateValue, 30000u);
    EXPECT_EQ(timecodes->info.frameRateScale, 1001u);
    EXPECT_EQ(timecodes->info.framesPerSecond, 30000.0 / 1001);
    EXPECT_TRUE(timecodes->info.dropFrame);
    const std::unique_ptr<VkjsonDocument> utc = ParseDocument(Document2(kUtcTimes), ParserChoice::kProbe);
    EXPECT_EQ(utc->info.version, "vkjson2.0.0");
    EXPECT_EQ(utc->info.timeMode, ZT_TIME_MODE_UTC);
    EXPECT_EQ(utc->info.frameRateValue, 0u);
    EXPECT_EQ(utc->info.frameRateScale, 1u);
    EXPECT_EQ(utc->info.precisionLength, 3u);
    EXPECT_TRUE(utc->info.isGmt);
    ASSERT_EQ(utc->videoSync.entries.size(), 2u);
    EXPECT_EQ(utc->videoSync.entries[0].fileName, "a.mov");
    EXPECT_EQ(boost::get<std::uint64_t>(utc->videoSync.entries[0].at), 7u);
    EXPECT_EQ(boost::get<std::string>(utc->videoSync.entries[1].at), "12:30:00:00");
    const std::unique_ptr<VkjsonDocument> without = ParseDocument(Outline2(""), ParserChoice::kProbe);
    EXPECT_EQ(without->info.timeMode, ZT_TIME_MODE_NONE);
    EXPECT_TRUE(without->info.creator.empty() && without->videoSync.entries.empty());
}

}  // namespace zentor_test
