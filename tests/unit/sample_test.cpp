// Sets of samples found at opening, and samples asked for by time.
#include <algorithm>
#include <limits>
#include <random>
#include <sstream>

#include "documents.h"
#include "zentor/utc_time.h"

namespace zentor_test {

using namespace zentor;

namespace {

constexpr auto kProbe = ParserChoice::kProbe;
constexpr ZT_Time kBegin = {std::numeric_limits<std::int32_t>::min(), 1};
constexpr ZT_Time kEnd = {std::numeric_limits<std::int32_t>::max(), 1};

const std::string k25 = R"("useTimecodeB":true,"timecodeInfo":{"frameRate":{"value":25,"scale":1},"dropFrame":false})";

std::string Pattern(bool isSigned, const std::string& integer, const std::string& decimals) {
    return R"("pattern":{"isSigned":)" + std::string(isSigned ? "true" : "false") + R"(,"digitsInteger":)" + integer +
           R"(,"digitsDecimal":)" + decimals + "}";
}

const std::string kRange = R"({"occurring":{"min":0,"max":0},"legal":{"min":0,"max":0}})";

// Types as they stand in the description of a node.
std::string Number(bool isSigned, const std::string& integer, const std::string& decimals = "0") {
    return R"("type":"numberString","numberStringProperties":{)" + Pattern(isSigned, integer, decimals) +
           R"(,"range":)" + kRange + "}";
}

std::string Array(int size, bool isSigned, const std::string& integer, const std::string& decimals = "0") {
    std::string ranges = kRange;
    for (int i = 1; i < size; ++i) ranges += "," + kRange;
    return R"("type":"numberStringArray","numberArrayProperties":{)" + Pattern(isSigned, integer, decimals) +
           R"(,"arraySize":)" + std::to_string(size) + R"(,"arrayRanges":{"ranges":[)" + ranges + "]}}";
}

std::string Padded(const std::string& maxLength, const std::string& digits) {
    return R"("type":"paddedString","paddedStringProperties":{"eventMarkerB":false,"maxLen":)" + maxLength +
           R"(,"maxDigitsInStrLength":)" + digits + "}";
}

std::string Node(const std::string& id, const std::string& count, const std::string& type) {
    return R"({"objectType":"dataDynamic","displayName":"","matchName":")" + id + R"(","sampleSetID":")" + id +
           R"(","interpolation":"hold","hasExpectedFrequencyB":false,"sampleCount":)" + count + R"(,"dataType":{)" +
           type + "}}";
}

std::string Record(const std::string& time, const std::string& value) {
    return R"({"time":")" + time + R"(","value":)" + value + "}";
}

std::string SetOf(const std::string& id, const std::string& records) {
    return R"({"sampleSetID":")" + id + R"(","samples":[)" + records + "]}";
}

// `samples`: the whole array of sets.
std::string Document(const std::string& nodes, const std::string& samples, const std::string& times = k25,
                     bool isVersion2 = true) {
    const std::string head = R"({"version":"vkjson2.0.0","dynamicSamplesPresentB":true,"dynamicDataInfo":{)";
    return (isVersion2 ? head + times + "}" : "{" + times) + R"(,"dataOutline":[)" + nodes +
           R"(],"dataDynamicSamples":)" + samples + "}";
}

// One set "s" with these records, one a second, of the values.
std::string Simple(const std::string& type, const std::vector<std::string>& values, bool isVersion2 = true) {
    std::string records;
    for (std::size_t i = 0; i < values.size(); ++i) {
        records += (i == 0 ? "" : ",") + Record("00:00:0" + std::to_string(i) + ":00", values[i]);
    }
    return Document(Node("s", std::to_string(values.size()), type), "[" + SetOf("s", records) + "]", k25, isVersion2);
}

std::string Show(const std::vector<ZT_Sample>& samples) {
    std::ostringstream text;
    for (const ZT_Sample& sample : samples) {
        text << (text.tellp() == 0 ? "" : " ") << sample.time << "=";
        if (const auto* const number = boost::get<double>(&sample.value)) text << *number;
        if (const auto* const string = boost::get<std::string>(&sample.value)) text << *string;
        if (const auto* const array = boost::get<std::vector<double>>(&sample.value)) {
            for (const double element : *array) text << element << ";";
        }
    }
    return text.str();
}

// An open document, and what queries of it give: samples, or a failure. Exactly its bytes, on the heap.
class Opened {
public:
    explicit Opened(const std::string& text) : bytes_(text.begin(), text.end()), document_(View(), kProbe) {}

    std::vector<ZT_Sample> Between(ZT_Time start, ZT_Time end, const std::string& id = "s") const {
        return document_.Samples(id, start, end);
    }
    std::vector<ZT_Sample> At(ZT_Time time, const std::string& id = "s") const {
        return document_.queries().SampleAt(document_.NodeOfSet(id), time).ReadAll();
    }
    std::string SpanOf(const std::string& id) const {
        const ZT_DynamicDataInfo info = document_.Dynamic(document_.NodeOfSet(id));
        return info.firstSampleTime.empty() ? "none" : info.firstSampleTime + " " + info.lastSampleTime;
    }

private:
    std::string_view View() const { return {bytes_.data(), bytes_.size()}; }

    std::vector<char> bytes_;
    OpenText document_;
};

std::string Answer(const Opened& document, ZT_Time start, ZT_Time end, const std::string& id = "s") {
    std::string text;
    const std::string failure = FailureOf([&] { text = Show(document.Between(start, end, id)); });
    return failure + text;
}

// All samples of "s" are asked for; a "@" in the text marks the offset of the failure.
void ExpectAnswer(std::string text, std::string expected) {
    const std::size_t mark = text.find('@');
    if (mark != std::string::npos) {
        text.erase(mark, 1);
        expected += " [" + std::to_string(mark) + "]";
    }
    std::string answer;
    const std::string failure = FailureOf([&] { answer = Answer(Opened(text), kBegin, kEnd); });
    EXPECT_EQ(failure + answer, expected) << text;
}

const std::string kSetData =
    "39: Invalid sample set data for sample id:s. Either information in dataOutline is incorrect or sample set data is "
    "malformed.";
const std::string kPlace = "\"sampleSetID:s/sample[0]\"";

}  // namespace

TEST(Samples, SetsAreAsWideAsTheOutlineSays) {
    const struct {
        std::string type, value, read;
    } cases[] = {{Number(false, "1"), "\"7\"", "7"},
                 {Number(false, "3"), "\"-07\"", "-7"},
                 {Number(true, "3", "2"), "\"-004.25\"", "-4.25"},
                 {Number(false, "0", "2"), "\".25\"", "0.25"},
                 {Array(1, false, "1"), R"(["7"])", "7;"},
                 {Array(3, true, "1", "1"), R"(["+1.5","-2.5","+0.0"])", "1.5;-2.5;0;"},
                 {Padded("0", "1"), R"({"length":"0","str":""})", ""},
                 {Padded("4", "3"), R"({"length":"003","str":"[a] "})", "[a]"},
                 {Padded("4", "3"), R"({"length":003,"str":"abcd"})", "abc"}};
    for (const auto& c : cases) {
        const std::string text = Simple(c.type, {c.value, c.value});
        ExpectAnswer(text, "00:00:00:00=" + c.read + " 00:00:01:00=" + c.read);
        ExpectFailure(Simple(c.type, {c.value, c.value + " @"}), kProbe, kSetData);
        const std::string shorter = Simple(c.type, {c.value, std::string(c.value).erase(c.value.size() - 2, 1)});
        ExpectFailure(shorter.substr(0, shorter.size() - 3) + "@}]}", kProbe, kSetData);
        if (c.type.find("Array") != std::string::npos) continue;
        ExpectAnswer(Simple(c.type, {c.value}, false), "00:00:00:00=" + c.read);
    }
    const std::string old = Replaced(Array(2, false, "1"), "StringArray", "Array");
    ExpectAnswer(Simple(old, {R"(["7","8"])"}, false), "00:00:00:00=7;8;");
}

TEST(Samples, SetsAreFoundByTheirKeys) {
    const std::string record = Record("00:00:00:00", "\"7\"");
    const std::string nodes = Node("s", "1", Number(false, "1")) + "," + Node("t", "1", Number(false, "1")) + "," +
                              Node("z", "0", Number(false, "1"));
    const std::string s = SetOf("s", record);
    const std::string t = SetOf("t", record);
    const auto missing = [](const std::string& key) {
        return "32: Unable to find mandatory properties : " + key + ".";
    };
    const auto noColon = [](const std::string& key) {
        return "32: Unable to find Colon(:) in between key and value for property:" + key + ".";
    };
    const std::tuple<std::string, std::vector<std::string>> cases[] = {
        {"",
         {"[]", "[ \n]", "[" + t + "," + s + "]", "[" + SetOf("z", "") + "]",
          "[ { \"sampleSetID\"\t: \"s\"\r,\n\"samples\" : [" + record + "]} ,\n" + t + " ]",
          R"([{"sampleSetID":"\u0073","samples":[)" + record + "]}]"}},
        {"32: Parsing error:\"dataDynamicSamples\", Invalid JSON Object.", {"[@1]", "[@[]]", "[" + s + ",@]"}},
        {missing("sampleSetID"),
         {"[{@}]", R"([{@"samples":[],"sampleSetID":"s"}])", R"([{@"SampleSetID":"s"}])", R"([{@sampleSetID:"s"}])"}},
        {missing("samples"), {R"([{"sampleSetID":"s",@}])", R"([{"sampleSetID":"s",@"sampleSetID":"s"}])"}},
        {noColon("sampleSetID"), {R"([{"sampleSetID"@="s"}])"}},
        {noColon("samples"), {R"([{"sampleSetID":"s","samples"@}])"}},
        {"32: Unable to find mandatory properties : sampleSetID.", {R"([{"sampleSetID":@1}])"}},
        {"32: Unable to find Comma or Closing bracket after property:sampleSetID.", {R"([{"sampleSetID":"s"@}])"}},
        {"43: Unable to find [, Invalid samples property, expected type : \"JSON Array\" in dynamic set with sample "
         "id:s.",
         {R"([{"sampleSetID":"s","samples":@{}}])"}},
        {"49: No dynamic data node is present in data outline with sample id:u.",
         {R"([{"sampleSetID":@"u","samples":[]}])"}},
        {Replaced(kSetData, "id:s", "id:z"), {"[" + SetOf("z", "@" + record) + "]", "[" + SetOf("z", "@ ") + "]"}},
        {kSetData,
         {"[" + s + "@" + t + "]", "[" + s + "@;" + t + "]", "[" + s + R"(,{"sampleSetID":@"s","samples":[]}])",
          "[" + Replaced(s, "]}", "]@ }") + "]", "[" + Replaced(s, "]}", "]@,\"x\":1}") + "]",
          "[" + Replaced(s, "]}", "@ ]}") + "]", "[" + SetOf("s", record + "@," + record) + "]",
          // As wide as it should be, "s" would end within the other set.
          R"([{"sampleSetID":"s","samples":[]},{"sampleSetID":"t","samples":[{@)" + record.substr(1) + "]}]"}}};
    for (const auto& [failure, texts] : cases) {
        for (const std::string& samples : texts) ExpectFailure(Document(nodes, samples), kProbe, failure);
    }
    // By its width the set would end outside the array.
    const std::string outside = R"([{"sampleSetID":"s","samples":[]}],"creator":")" + std::string(28, 'x') + R"(]}@]")";
    ExpectFailure(Document(Node("s", "1", Number(false, "10")), outside), kProbe, kSetData);
}

TEST(Samples, SetsThatWouldEndPastTheFile) {
    const std::string most = "9007199254740992";
    const std::string record = Record("00:00:00:00", "\"7\"");
    const std::string failure =
        "36: Invalid  dynamic node info in data outline for sample set:s.Calculated sample set size is out of file "
        "offset range.";
    const std::pair<std::string, std::string> cases[] = {{"1000", Number(false, "1")},
                                                         {most, Number(false, "1")},
                                                         {most, Number(true, most, most)},
                                                         {"1", Padded(most, most)},
                                                         {most, Padded("4", "1")},
                                                         {most, Array(1, true, most, most)},
                                                         // 2^64 bytes and as many as there are.
                                                         {"1229045510940739", Number(false, "14975")}};
    for (const auto& [count, type] : cases) {
        const std::string nodes = Node("s", count, type) + "," + Node("t", "1", Number(false, "1"));
        const std::string samples = "[" + SetOf("s", "@" + record) + "," + SetOf("t", record) + "]";
        ExpectAnswer(Document(nodes, samples), failure);
        const Opened document(Replaced(Document(nodes, samples), "@", ""));
        EXPECT_EQ(Answer(document, kBegin, kEnd, "t"), "00:00:00:00=7") << count << type;
        EXPECT_EQ(document.SpanOf("s") + document.SpanOf("t"), "none00:00:00:00 00:00:00:00");
        ExpectAnswer(Document(nodes, "[" + SetOf("t", record) + "," + SetOf("s", "@") + "]"), failure);
    }
    // Elements that nobody could count, and times that nobody could write.
    const std::string array =
        Replaced(Array(1, false, "1"), R"("arraySize":1,"arrayRanges")", R"("x":0,"arrayRanges")");
    ExpectFailure(Document(Node("s", "1", array), "[" + SetOf("s", Record("00:00:00:00", "[\"@1\"]")) + "]"), kProbe,
                  kSetData);
    const std::string utc = R"("useTimecodeB":false,"utcInfo":{"precisionLength":)" + most + R"(,"isGMT":true})";
    ExpectAnswer(Document(Node("s", most, Number(true, most)), "[" + SetOf("s", "@" + record) + "]", utc), failure);
    // The last byte of the file is the last one that the set may have.
    const std::string text = Document(Node("s", "1", Number(false, "4")), "[" + SetOf("s", record) + "]");
    ExpectFailure(text.substr(0, text.size() - 1) + "@}", kProbe, kSetData);
    ExpectAnswer(Replaced(Replaced(text, "Integer\":4", "Integer\":5"), "\"samples\":[", "\"samples\":[@"), failure);
}

TEST(Samples, NodesWithout) {
    const std::string nodes = Node("s", "1", Number(false, "1")) + "," + Node("t", "0", Number(false, "1"));
    const auto none = [](const std::string& id) {
        return "38: No dynamic sample data present for sample id : " + id + ".";
    };
    for (const std::string& samples : {std::string("[]"), "[" + SetOf("t", "") + "]"}) {
        const Opened document(Document(nodes, samples));
        EXPECT_EQ(Answer(document, kBegin, kEnd), none("s"));
        EXPECT_EQ(Answer(document, kBegin, kEnd, "t"), none("t"));
        EXPECT_EQ(document.SpanOf("s"), "none");
    }
    ExpectAnswer(Replaced(Document(nodes, "[]"), R"(,"dataDynamicSamples":[])", ""), none("s"));
}

TEST(Samples, MalformedRecords) {
    const std::string good = Record("00:00:00:00", "\"7\"");
    const std::string invalid = "Invalid sample:";
    const std::string time = "Invalid sample time:";
    const struct {
        std::string from, to, message;
    } cases[] = {{"{", "(", invalid},
                 {"\"time\"", "\"Time\"", "Unable to find mandatory property:time at "},
                 {":\"00", ": 00", time},
                 {"00:", "0x:", time},
                 {":00\"", ":25\"", time},
                 {"\",", "',", invalid},
                 {",", ";", invalid},
                 {"\"value\"", "\"valve\"", "Unable to find mandatory property:value at "},
                 {"\"7\"", "\"x\"", "Invalid sample value:"},
                 {"\"7\"", "\" \"", "Invalid sample value:"},
                 {"\"7\"", "[7]", "Invalid sample value:"},
                 {"7\"}", "7\")", invalid}};
    for (const auto& c : cases) {
        for (std::size_t bad = 0; bad < 3; ++bad) {
            std::string records;
            for (std::size_t i = 0; i < 3; ++i) {
                records += (i == 0 ? "" : ",") + (i == bad ? "@" + Replaced(good, c.from, c.to) : good);
            }
            const std::string place = "\"sampleSetID:s/sample[" + std::to_string(bad) + "]\"";
            std::string failure = c.message + place + (c.message.starts_with("Unable") ? "." : "");
            if (c.message == time && bad == 0) failure = "Invalid time value for :" + place + ".";
            if (c.message == time && bad == 2) failure = "Invalid time value for sample id:s.";
            ExpectAnswer(Document(Node("s", "3", Number(false, "1")), "[" + SetOf("s", records) + "]"),
                         "39: " + failure);
        }
    }
    const std::string two = Simple(Number(false, "1"), {"\"1\"", "\"2\""});
    ExpectAnswer(Replaced(Replaced(two, "},{\"time", "};{\"time"), "{\"time", "@{\"time"), "39: " + invalid + kPlace);
    // What is not asked for is not looked at.
    const Opened document(Simple(Number(false, "1"), {"\"1\"", "\"2\"", "\"x\"", "\"4\"", "\"5\""}));
    EXPECT_EQ(Answer(document, {0, 1}, {1, 1}), "00:00:00:00=1 00:00:01:00=2");
    EXPECT_EQ(Show(document.At({3, 1})), "00:00:03:00=4");
    EXPECT_EQ(document.SpanOf("s"), "00:00:00:00 00:00:04:00");
}

TEST(Samples, Values) {
    const std::string number = Number(true, "3", "1");
    const std::string array = Array(2, false, "3");
    const std::string padded = Padded("6", "2");
    const std::string bad = "39: Invalid sample value:" + kPlace;
    const std::string few = "39: Number array does not contains enough elements at " + kPlace + ".";
    const auto quoted = [](const std::string& length, const std::string& text) {
        return R"({"length":")" + length + R"(","str":")" + text + "\"}";
    };
    const auto text = [&](const std::string& length) { return quoted(length, "abcdef"); };
    const std::tuple<std::string, std::string, std::vector<std::string>> cases[] = {
        {number, "=1.5", {"\"+001.5\"", "\"1.5000\"", "\"0.15e1\""}},
        {number,
         bad,
         {"\"  +1.5\"", "\"1.5   \"", "\"1e9999\"", "\"-1,5.0\"", "\"+-0001\"", "\"   nan\"", "+001.500", "'+001.5'",
          "\"01\\u30\""}},
        {array, "=1;20;", {R"(["001","020"])", R"(["0001","20"])"}},
        {array, few, {R"(["123456789"])", R"(["12345678",])", R"([]"01"[,"02"])"}},
        {array,
         bad,
         {R"(["1","2","3"])", R"(["1","23"],[])", R"(["001";"020"])", R"(["001","02x"])", R"(["001",00020])",
          R"([           ])", R"(]"001","020"[)"}},
        {padded, "=abcdef", {text("06"), R"({"length":06,"str":"abcdef"})"}},
        {padded, "=", {text("00")}},
        {padded, R"(=\u4)", {quoted("03", R"(\u41\t)")}},
        {padded, "=A", {quoted("06", R"(\u0041)")}},
        {padded, R"(=\u)", {quoted("02", R"(\u0041)")}},  // the bytes count, before they are decoded
        {padded, R"(=ab"}\)", {quoted("06", R"(ab"}\\)"), quoted("06", R"(ab\"}\)")}},
        {padded, R"(=ab"})", {quoted("05", R"(ab\"}\)")}},
        {padded, "39: Padded string length cannot be greater than max length.", {text("07"), text("99")}},
        {padded,
         bad,
         {text("+6"), text("6 "), text("-1"), R"({"length": 6,"str":"abcdef"})", R"({"length":"06',"str":"abcdef"})",
          R"({"Length":"06","str":"abcdef"})", R"({"length":"06","Str":"abcdef"})",
          R"({"length":"06","str":"abcdef'})"}},
        {Padded("0", "0"), bad, {R"({"length":,"str":""})"}},
        {Padded("0", "400"), bad, {quoted(std::string(400, '9'), "")}}};
    for (const auto& [type, answer, values] : cases) {
        for (const std::string& value : values) {
            const std::string document = Simple(type, {value});
            const bool isGood = answer.starts_with('=');
            ExpectAnswer(isGood ? document : Replaced(document, "{\"time", "@{\"time"),
                         isGood ? "00:00:00:00" + answer : answer);
        }
    }
    // A set has its lengths with quotes or without.
    const std::string mixed = Simple(padded, {quoted("06", "abcdef"), R"({"length":0006,"str":"abcdef"})"});
    ExpectAnswer(Replaced(mixed, "},{", "},@{"), Replaced(bad, "[0]", "[1]"));
}

TEST(Samples, BetweenTwoTimesAndAtOne) {
    const std::string times[] = {"00:00:00:00", "00:00:01:00", "00:00:01:00", "00:00:03:24", "23:59:59:24"};
    std::string records;
    for (std::size_t i = 0; i < std::size(times); ++i) {
        records += (i == 0 ? "" : ",") + Record(times[i], '"' + std::to_string(i) + '"');
    }
    const Opened document(Document(Node("s", "5", Number(false, "1")), "[" + SetOf("s", records) + "]"));
    constexpr std::int32_t kMost = kEnd.value;
    const std::tuple<std::int32_t, std::uint32_t, std::int32_t, std::uint32_t, std::string> ranges[] = {
        {0, 1, 1, 1, "012"},
        {1, 1, 1, 1, "12"},
        {1, 25, 99, 100, ""},
        {0, 1, 99, 100, "0"},
        {26, 25, 98, 25, ""},
        {99, 25, 3999, 1000, "3"},
        {4, 1, 1, 1, "321"},
        {3999, 1000, 0, 7, "3210"},
        {1, 1, -1, 1, "210"},
        {-2, 1, -1, 1000, ""},
        {-1, 1, 0, 1, "0"},
        {5, 1, 86399, 1, ""},
        {86400, 1, 90000, 1, "4"},
        {kBegin.value, 1, kMost, 1, "01234"},
        {kMost, 1, kBegin.value, 1, "43210"},
        {kMost, 4294967295U, kMost, 2147483647, "12"},
        {1039, 1000, 1001, 1000, "21"}};
    for (const auto& [start, startScale, end, endScale, expected] : ranges) {
        std::string values;
        for (const ZT_Sample& sample : document.Between({start, startScale}, {end, endScale}))
            values += Show({sample}).back();
        EXPECT_EQ(values, expected) << start << "/" << startScale << " to " << end << "/" << endScale;
    }
    const std::tuple<ZT_Time, std::string> ones[] = {{{0, 1}, "0"}, {{999, 1000}, "0"},  {{1, 1}, "2"},
                                                     {{3, 1}, "2"}, {{3959, 1000}, "2"}, {{99, 25}, "3"},
                                                     {kEnd, "4"},   {{-1, 1000}, ""}};
    for (const auto& [time, value] : ones) {
        const std::vector<ZT_Sample> found = document.At(time);
        EXPECT_EQ(found.empty() ? "" : Show(found).substr(12), value) << time.value << "/" << time.scale;
    }
}

TEST(Samples, AnswersAreThoseOfALinearScan) {
    __extension__ typedef __int128 Wide;
    std::mt19937 random(1);
    std::size_t found = 0;
    std::size_t queries = 0;
    const struct {
        std::string info;
        std::int64_t unit, scale;  // parts of a second that times can say, as a fraction
        std::uint32_t precision;   // of UTC
    } forms[] = {{Replaced(k25, "25,", "120,"), 120, 1, 0},
                 {kTimecodes, 30000, 1001, 0},
                 {kUtcTimes, 1000, 1, 3},
                 {R"("useTimecodeB":false,"utcInfo":{"precisionLength":0,"isGMT":false})", 1, 1, 0},
                 {R"("useTimecodeB":false,"utcInfo":{"precisionLength":9,"isGMT":false})", 1000000000, 1, 9}};
    const std::pair<std::string, std::string> kinds[] = {{Number(true, "3"), R"("+007")"},
                                                         {Array(2, false, "2"), R"(["07","70"])"},
                                                         {Padded("5", "1"), R"({"length":"3","str":"7bc  "})"}};
    for (int run = 0; run < 600; ++run) {
        const auto& form = forms[static_cast<std::size_t>(run) % std::size(forms)];
        const auto& [type, value] = kinds[random() % 3];
        const bool isUtc = form.info.find("utc") != std::string::npos;
        const FrameRate rate = {static_cast<std::uint32_t>(form.unit), static_cast<std::uint32_t>(form.scale),
                                form.info == kTimecodes};
        const std::int64_t last = isUtc ? std::numeric_limits<std::int64_t>::max() : FramesPerDay(rate) - 1;
        const std::int64_t begin = isUtc ? -form.unit : random() % 2 == 0 ? 0 : last - 20;
        // Times in the smallest unit that they can say, some of them equal, and their records.
        std::vector<std::int64_t> at;
        std::string records;
        // Some sets are too long to be read at once, and their times come at no steady pace.
        const std::size_t most = run % 12 == 0 ? 800 : 1 + random() % 40;
        for (std::int64_t time = begin; at.size() < most && time <= last; time += random() % 3) {
            if (most == 800 && random() % 80 == 0) time += random() % 900;
            if (time > last) break;
            char text[64];
            const std::int64_t seconds = time < 0 ? -1 : time / form.unit;
            const auto rest = static_cast<std::uint32_t>((time - seconds * form.unit) * (1000000000 / form.unit));
            const bool isGmt = !isUtc || form.info == kUtcTimes;
            const auto hours = static_cast<std::int64_t>(isGmt ? 0 : random() % 10);
            const std::int64_t offset = isGmt ? 0 : random() % 2 == 0 ? hours * 3600 + 1800 : -hours * 3600 - 1800;
            std::string shown(text, isUtc ? FormatUtc(seconds + offset, rest, form.precision, true, text)
                                          : FormatTimeCode(time, rate, text));
            if (offset != 0)
                shown.replace(shown.size() - 1, 1, (offset < 0 ? "-0" : "+0") + std::to_string(hours) + ":30");
            records += (at.empty() ? "" : ",") + Record(shown, Replaced(value, "7", std::to_string(at.size() % 10)));
            at.push_back(time);
        }
        const Opened document(Document(Node("s", std::to_string(at.size()), type), "[" + SetOf("s", records) + "]",
                                       form.info, type.find("StringArray") != std::string::npos || random() % 2 == 0));
        const std::vector<ZT_Sample> all = document.Between(kBegin, kEnd);
        ASSERT_EQ(all.size(), at.size());
        const auto cutDown = [&](ZT_Time time) {
            const Wide ticks = Wide{time.value} * form.unit;
            const Wide parts = Wide{time.scale} * form.scale;
            const Wide down = ticks / parts - (ticks % parts < 0 ? 1 : 0);
            return down > last ? last : static_cast<std::int64_t>(down);
        };
        for (int query = 0; query < 30; ++query, ++queries) {
            const auto any = [&] {
                const auto scale = static_cast<std::uint32_t>(1 + random() % 20000);
                const std::int64_t unit = at[random() % at.size()] + static_cast<std::int64_t>(random() % 3) - 1;
                const Wide ticks = Wide{unit} * form.scale * scale / form.unit + random() % 3;
                return ZT_Time{static_cast<std::int32_t>(ticks), scale};
            };
            const ZT_Time start = any();
            const ZT_Time end = any();
            const bool isBack = Wide{start.value} * end.scale > Wide{end.value} * start.scale;
            std::vector<ZT_Sample> between;
            std::vector<ZT_Sample> latest;
            for (std::size_t i = 0; i < at.size(); ++i) {
                const bool isIn = at[i] >= cutDown(isBack ? end : start) && at[i] <= cutDown(isBack ? start : end);
                if (isIn) between.push_back(all[i]);
                if (at[i] <= cutDown(start)) latest = {all[i]};
            }
            if (isBack) std::reverse(between.begin(), between.end());
            found += between.size();
            ASSERT_EQ(Show(document.Between(start, end)), Show(between)) << start.value << "/" << start.scale;
            ASSERT_EQ(Show(document.At(start)), Show(latest)) << start.value << "/" << start.scale;
        }
    }
    EXPECT_GT(found, queries);
}

// Recordings that go on past midnight, and labels that drop frame leaves out.
TEST(Samples, TimeCodesThatBeginAnew) {
    const auto open = [](const std::vector<std::string>& times, const std::string& info) {
        std::string records;
        for (std::size_t i = 0; i < times.size(); ++i) {
            records += (i == 0 ? "" : ",") + Record(times[i], '"' + std::string(1, static_cast<char>('0' + i)) + '"');
        }
        return Opened(Document(Node("s", std::to_string(times.size()), Number(false, "1")),
                               "[" + SetOf("s", records) + "]", info));
    };
    const auto values = [](const std::vector<ZT_Sample>& samples) {
        std::string text;
        for (const ZT_Sample& sample : samples) text += Show({sample}).back();
        return text;
    };
    const Opened night = open({"23:59:58:00", "23:59:59:00", "23:59:59:24", "00:00:00:00", "00:00:01:00"}, k25);
    EXPECT_EQ(values(night.Between(kBegin, kEnd)), "01234");
    EXPECT_EQ(values(night.Between(kEnd, kBegin)), "43210");
    EXPECT_EQ(values(night.Between({86399, 1}, {86400, 1})), "12");
    EXPECT_EQ(values(night.Between({0, 1}, {1, 25})), "3");
    EXPECT_EQ(values(night.Between({1, 1}, {86398, 1})), "04");
    EXPECT_EQ(values(night.Between({2, 1}, {86397, 1})), "");
    EXPECT_EQ(values(night.At({1, 2})), "3");
    EXPECT_EQ(values(night.At({50000, 1})), "4");
    EXPECT_EQ(values(night.At({86399, 1})), "1");
    EXPECT_EQ(night.SpanOf("s"), "23:59:58:00 00:00:01:00");
    // 00:01:00:00 is the frame that counting gives: 1798, as 00:00:59:28 is.
    const Opened dropped = open({"00:01:00:00", "00:01:00:02", "00:02:00:01"}, kTimecodes);
    EXPECT_EQ(values(dropped.Between(kBegin, kEnd)), "012");
    EXPECT_EQ(values(dropped.Between({1798 * 1001, 30000}, {1799 * 1001, 30000})), "0");
    EXPECT_EQ(dropped.SpanOf("s"), "00:01:00:00 00:02:00:01");
}

// Sets whose records stand in the same steps, and what only looks like records.
TEST(Samples, EndsOfSetsAreFoundByTheirRecords) {
    for (std::size_t first : {1u, 2u, 3u, 7u, 64u, 100u}) {
        for (std::size_t second : {0u, 1u, 5u, 200u}) {
            for (std::size_t idLength = 1; idLength < 40; ++idLength) {  // some make the steps of both sets meet
                const std::string id(idLength, 'x');
                const auto records = [](std::size_t count, const char* value) {
                    std::string text;
                    for (std::size_t i = 0; i < count; ++i) {
                        char time[TimeForm::kWidestFormatted];
                        char* const end = FormatTimeCode(static_cast<std::int64_t>(i), {25, 1, false}, time);
                        text += (i == 0 ? "" : ",") + Record(std::string(time, end), value);
                    }
                    return text;
                };
                const std::string text = Document(
                    Node("s", std::to_string(first), Number(false, "1")) + "," +
                        Node(id, std::to_string(second), Number(false, "1")),
                    "[" + SetOf("s", records(first, "\"1\"")) + "," + SetOf(id, records(second, "\"2\"")) + "]");
                const OpenText document(text, kProbe);
                EXPECT_EQ(document.Samples("s").size(), first);
                if (second != 0) {
                    EXPECT_EQ(document.Samples(id).size(), second);
                }
                EXPECT_TRUE(document->samples.HasGalloped()) << first << ' ' << second << ' ' << idLength;
            }
        }
    }
    // A text that ends its set, for those who do not count its bytes.
    const std::string tricky = R"({"length":"12","str":"]}],\"x\":[{"})";
    const Opened document(Simple(Padded("12", "2"), {tricky, tricky, tricky}));
    EXPECT_EQ(document.Between(kBegin, kEnd).size(), 3u);
}

}  // namespace zentor_test
