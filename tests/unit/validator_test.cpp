// The rules that nodes and time information follow.
#include "documents.h"

namespace zentor_test {

using namespace zentor;

namespace {

constexpr auto kV1 = ParserChoice::kVersion1;
constexpr auto kV2 = ParserChoice::kVersion2;

const std::string kCount = "a whole number from 0 to 9007199254740992";

// The quoted place of [0].a.b in the property: "property[0]/["a"]/["b"]".
std::string Place(const std::string& steps) {
    std::string place;
    bool isOpen = false;
    for (const char c : steps + '\0') {
        if (isOpen && (c == '.' || c == '[' || c == '\0')) {
            place += "\"]";
            isOpen = false;
        }
        if (c == '.') {
            place += "/[\"";
            isOpen = true;
        } else if (c != '\0') {
            place += c;
        }
    }
    return '"' + place + '"';
}

std::string Missing(const std::string& name, const std::string& place) {
    return "28: Unable to find mandatory property:" + name + " at " + Place(place) + ".";
}
std::string WrongType(const std::string& name, const std::string& type, const std::string& place) {
    return "43: Invalid " + name + " type, expected type:\"JSON " + type + "\" at " + Place(place) + ".";
}
std::string WrongValue(const std::string& name, const std::string& expected, const std::string& place) {
    return "44: Invalid value for " + name + " at " + Place(place) + ", expected:" + expected + ".";
}
std::string NoItems(const std::string& name, const std::string& place) {
    return "47: Invalid " + name + ", expected atleast 1 array item, found 0 at " + Place(place) + ".";
}
std::string WrongCount(const std::string& name, const std::string& place) {
    return WrongValue(name, "as many items as \"arraySize\" says", place);
}
std::string BadName(const std::string& place) {
    return "42: Invalid matchName at " + Place(place) + ". Not following VKJSON guidelines.";
}
std::string SameName(const std::string& name, const std::string& place) {
    return "40: Duplicate MatchName:" + name + " at " + Place(place) +
           ". MatchName must be unique for every node in \"dataOutline\".";
}
std::string OnlyIf(const std::string& name, const std::string& value) {
    return "46: " + name + " can be present if and only if useTimecodeB is set to " + value + ".";
}
std::string SyncEntry(const std::string& rule, const std::string& place) {
    return "44: Invalid videoSyncTimeList, " + rule + " be present at " + Place(place) + ".";
}

// Properties with their types, of the object that begins with `holder` and has the place `place`. A "?" before the name
// says that the property may be missing; "Count" is a number that counts.
struct Object {
    std::string holder;
    std::string place;
    std::vector<std::pair<std::string, std::string>> properties;
};

// Takes each property away, and gives it values of other types and out of its range.
void ExpectChecked(const std::string& good, ParserChoice choice, const Object& object) {
    const std::size_t holder = good.find(object.holder);
    ASSERT_NE(holder, std::string::npos) << object.holder;
    for (auto [name, type] : object.properties) {
        const bool isOptional = name.starts_with('?');
        if (isOptional) name.erase(0, 1);
        const bool isCount = type == "Count";
        if (isCount) type = "Number";
        const std::string key = '"' + name + "\":";
        // What it was before means nothing under another name.
        const auto with = [&](const std::string& member) { return Replaced(good, key, member + "\"x\":", holder); };
        ExpectFailure(with("").insert(holder, isOptional ? "" : "@"), choice,
                      isOptional ? "" : Missing(name, object.place));
        const std::pair<const char*, const char*> values[] = {
            {"Object", "{}"}, {"Array", "[]"}, {"String", "\"1\""}, {"Number", "1"}, {"Boolean", "true"}};
        for (const auto& [valueType, value] : values) {
            if (valueType == type) continue;
            ExpectFailure(with(key + "@" + value + ","), choice, WrongType(name, type, object.place));
        }
        if (!isCount) continue;
        for (const char* const value : {"-1", "0.5", "9007199254740994", "1e300"}) {
            ExpectFailure(with(key + " @" + value + ","), choice, WrongValue(name, kCount, object.place));
        }
        for (const char* const value : {"-0", "9007199254740992", "2.5e1"}) {
            // The size has to fit the arrays, too.
            if (name != "arraySize") ExpectFailure(with(key + value + ","), choice, "");
        }
    }
}

// In a good document the first `from` becomes `to`, where "@" marks the failure.
struct Change {
    std::string from;
    std::string to;
    std::string failure;
};

void ExpectFailures(const std::string& good, ParserChoice choice, const std::vector<Change>& changes) {
    for (const Change& change : changes) ExpectFailure(Replaced(good, change.from, change.to), choice, change.failure);
}

// Samples would have to fit what is changed.
const std::pair<ParserChoice, std::string> kDocuments[] = {{kV1, Document1(kUtcTimes, false)},
                                                           {kV2, Document2(kTimecodes, false)}};

// Documents with this time information, and the steps to it.
std::vector<std::tuple<ParserChoice, std::string, std::string>> TimeDocuments(const std::string& timeInfo) {
    return {{kV1, Document1(timeInfo, false), ""}, {kV2, Document2(timeInfo, false), "dynamicDataInfo."}};
}

}  // namespace

TEST(Validator, PropertiesOfNodes) {
    const std::string number = "[0].dataType.numberStringProperties";
    const std::string array = "[2].dataType.numberArrayProperties";
    for (const auto& [choice, text] : kDocuments) {
        const std::string arrayType = choice == kV1 ? "numberArray" : "numberStringArray";
        const Object objects[] = {
            {R"({"matchName":"d1")",
             "[0]",
             {{"objectType", "String"},
              {"displayName", "String"},
              {"matchName", "String"},
              {"sampleSetID", "String"},
              {"interpolation", "String"},
              {"hasExpectedFrequencyB", "Boolean"},
              {"sampleCount", "Count"},
              {"expectedMaxInterSampleDuration", "String"},
              {"dataType", "Object"}}},
            {R"({"matchName":"g1")", "[3]", {{"children", "Array"}}},
            {R"({"matchName":"n1")",
             "[3].children[0]",
             {{"objectType", "String"}, {"displayName", "String"}, {"matchName", "String"}, {"dataType", "Object"}}},
            {R"({"type":"numberString")", "[0].dataType", {{"type", "String"}, {"numberStringProperties", "Object"}}},
            {R"({"pattern":{"isSigned":true)", number, {{"pattern", "Object"}, {"range", "Object"}}},
            {R"({"isSigned":true)",
             number + ".pattern",
             {{"isSigned", "Boolean"}, {"?digitsInteger", "Count"}, {"?digitsDecimal", "Count"}}},
            {R"({"occurring")", number + ".range", {{"occurring", "Object"}, {"legal", "Object"}}},
            {R"({"min":-4.5)", number + ".range.occurring", {{"min", "Number"}, {"max", "Number"}}},
            {R"({"min":-100)", number + ".range.legal", {{"min", "Number"}, {"max", "Number"}}},
            {R"({"type":"paddedString")", "[1].dataType", {{"type", "String"}, {"paddedStringProperties", "Object"}}},
            {R"({"maxDigitsInStrLength")",
             "[1].dataType.paddedStringProperties",
             {{"?maxLen", "Count"}, {"?maxDigitsInStrLength", "Count"}, {"eventMarkerB", "Boolean"}}},
            {R"({"type":")" + arrayType, "[2].dataType", {{"type", "String"}, {"numberArrayProperties", "Object"}}},
            {R"({"pattern":{"isSigned":false)",
             array,
             {{"pattern", "Object"},
              {"arrayRanges", "Object"},
              {"?arraySize", "Count"},
              {"?arrayDisplayNames", "Array"},
              {"?isPoint", "Boolean"}}},
            {R"({"isSigned":false)", array + ".pattern", {{"isSigned", "Boolean"}, {"?digitsInteger", "Count"}}},
            {R"({"ranges")", array + ".arrayRanges", {{"ranges", "Array"}}},
            {R"({"occurring":{"min":2)", array + ".arrayRanges.ranges[1]", {{"occurring", "Object"}}},
            {R"({"min":0,"max":9)", array + ".arrayRanges.ranges[1].legal", {{"max", "Number"}}}};
        for (Object object : objects) {
            object.place.insert(0, "dataOutline");
            ExpectChecked(text, choice, object);
        }
    }
}

TEST(Validator, ValuesOfNodes) {
    const std::string array = "dataOutline[2].dataType.numberArrayProperties";
    const std::string objects = R"(one of "dataStatic", "dataDynamic" or "dataGroup")";
    for (const auto& [choice, text] : kDocuments) {
        ExpectFailures(
            text, choice,
            {{R"("dataDynamic")", R"(@"dataNone")", WrongValue("objectType", objects, "dataOutline[0]")},
             {R"("dataStatic")", R"(@"datastatic")", WrongValue("objectType", objects, "dataOutline[3].children[0]")},
             {R"("dataGroup")", R"(@"")", WrongValue("objectType", objects, "dataOutline[3]")},
             {R"("linear")", R"(@"Hold")",
              WrongValue("interpolation", R"(one of "linear" or "hold")", "dataOutline[0]")},
             {R"("hasExpectedFrequencyB":true)", R"("hasExpectedFrequecyB":true)", ""},
             {R"("hasExpectedFrequencyB":true)", R"("hasExpectedFrequecyB":@1)",
              WrongType("hasExpectedFrequecyB", "Boolean", "dataOutline[0]")},
             {R"("occurring":{)", R"("occuring":{)", ""},
             {R"("occurring":{"min":2,)", R"("occuring":@{)",
              Missing("min", array + ".arrayRanges.ranges[1].occuring")},
             {R"("sampleCount":1)", R"("sampleCount":1,"expectedMaxInterSampleDuration":5)", ""},
             {R"("displayName":"Speed")", R"("displayName":"","children":5,"value":{"objectType":"x"})", ""},
             {R"("x","y")", R"("x",@1)", WrongType("arrayDisplayNames", "String", array + ".arrayDisplayNames[1]")},
             {R"(["x","y"])", R"(@["x"])", WrongCount("arrayDisplayNames", array)},
             {R"(["x","y"])", R"(@["x","y","z"])", WrongCount("arrayDisplayNames", array)},
             {R"("arraySize":2,"arrayDisplayNames":["x","y"])", R"("arrayDisplayNames":["x"])", ""},
             {R"("arraySize":2,"arrayDisplayNames":["x","y"])", R"("isPoint":false)", ""},
             {R"("ranges":[)", R"("ranges":[@true,)", WrongType("ranges", "Object", array + ".arrayRanges.ranges[0]")},
             {R"("ranges":[)", R"("ranges":@[{"occurring":{"min":0,"max":0},"legal":{"min":0,"max":0}},)",
              WrongCount("ranges", array + ".arrayRanges")},
             {R"("ranges":[)", R"("ranges":@[],"x":[)", NoItems("ranges", array + ".arrayRanges")},
             {R"("dataOutline":[)", R"("dataOutline":[@[],)", WrongType("dataOutline", "Object", "dataOutline[0]")}});
    }
}

TEST(Validator, NodesOfVersion1) {
    const std::string text = Document1(kUtcTimes, false);
    const std::string types = R"(one of "numberString", "paddedString" or "numberArray")";
    const std::string array = "dataOutline[2].dataType.numberArrayProperties";
    const std::string number = "dataOutline[3].children[0]";
    const std::string string = "dataOutline[3].children[1]";
    const std::string values = "dataOutline[3].children[2]";
    const std::string length = R"("length":"2")";
    ExpectFailures(
        text, kV1,
        {{R"("numberArray")", R"(@"numberStringArray")", WrongValue("type", types, "dataOutline[2].dataType")},
         {R"("Static t1","dataType":{"type":"paddedString")", R"("Static t1","dataType":{"type":@"string")",
          WrongValue("type", types, string + ".dataType")},
         {R"("Static n1","dataType":{"type":"numberString","n)", R"("Static n1","dataType":@{"type":"numberString","x)",
          Missing("numberStringProperties", number + ".dataType")},
         {R"("children":[{"matchName":"n2")", R"("children":@[],"x":[{"matchName":"n2")",
          NoItems("children", "dataOutline[3].children[3]")},
         {R"(["x","y"])", "[]", ""},
         {R"("+002.50")", "-1e2", ""},
         {R"("+002.50")", R"(@"2.5 m")", WrongValue("value", "a number", number)},
         {R"("+002.50")", R"(@"")", WrongValue("value", "a number", number)},
         {R"("+002.50")", "@true", WrongType("value", "String", number)},
         {R"({"length":"2","str":"ab  "})", "@5", WrongType("value", "Object", string)},
         {R"({"length":"2","str":"ab  "})", R"(@{"length":"2"})", Missing("str", string + ".value")},
         {R"({"length":"2","str":"ab  "})", R"(@{"str":"ab"})", Missing("length", string + ".value")},
         {length, R"("length":4)", ""},
         {length, R"("length":"004")", ""},
         {length, R"("length":@true)", WrongType("length", "String", string + ".value")},
         {length, R"("length":@"5")", "39: Padded string length cannot be greater than max length."},
         {length, R"("length":@4.5)", WrongValue("length", kCount, string + ".value")},
         {length, R"("length":@"-1")", WrongValue("length", kCount, string + ".value")},
         {length, R"("length":@"")", WrongValue("length", kCount, string + ".value")},
         {R"("str":"ab  ")", R"("str":@1)", WrongType("str", "String", string + ".value")},
         {R"(["3",4])", "[]", ""},
         {R"(["3",4])", "@{}", WrongType("value", "Array", values)},
         {R"(["3",4])", R"(["3",@[4]])", WrongType("value", "String", values + ".value[1]")},
         {R"(["3",4])", R"([@"three",4])", WrongValue("value", "a number", values + ".value[0]")}});
    ExpectFailure(
        Replaced(Replaced(text, R"("maxLen":4,"eventMarkerB":false}},"value")", R"("eventMarkerB":false}},"value")"),
                 length, R"("length":@1e300)"),
        kV1, WrongValue("length", kCount, string + ".value"));
    ExpectChecked(text, kV1, {R"({"matchName":"a1")", values, {{"dataType", "Object"}}});
}

TEST(Validator, NodesOfVersion2) {
    const std::string text = Document2(kTimecodes, false);
    const std::string dynamics = R"(one of "numberString", "paddedString" or "numberStringArray".)";
    const std::string statics = R"(one of "number", "string" , "boolean" or "numberArray")";
    const std::string children = "dataOutline[3].children";
    ExpectFailures(
        text, kV2,
        {{R"("numberStringArray")", R"(@"numberArray")", WrongValue("type", dynamics, "dataOutline[2].dataType")},
         {R"("numberString")", R"(@"number")", WrongValue("type", dynamics, "dataOutline[0].dataType")},
         {R"("number")", R"(@"numberString")", WrongValue("type", statics, children + "[0].dataType")},
         {R"("string")", R"(@"paddedString")", WrongValue("type", statics, children + "[1].dataType")},
         {R"({"type":"number","n)", R"(@{"type":"number","x)",
          Missing("numberStringProperties", children + "[0].dataType")},
         {R"({"type":"string","p)", R"(@{"type":"string","x)",
          Missing("paddedStringProperties", children + "[1].dataType")},
         {R"({"type":"numberArray","n)", R"(@{"type":"numberArray","x)",
          Missing("numberArrayProperties", children + "[2].dataType")},
         {"[3,4]", "[]", ""},
         {"[3,4]", R"([3,@"4"])", WrongType("value", "Number", children + "[2].value[1]")},
         {R"(["x","y"])", "[]", ""}});
    ExpectChecked(text, kV2, {R"({"matchName":"n1")", children + "[0]", {{"value", "Number"}}});
    ExpectChecked(text, kV2, {R"({"matchName":"t1")", children + "[1]", {{"value", "String"}}});
    ExpectChecked(text, kV2, {R"({"matchName":"a1")", children + "[2]", {{"value", "Array"}}});
    ExpectChecked(text, kV2, {R"({"matchName":"b1")", children + "[3]", {{"value", "Boolean"}}});
}

TEST(Validator, MatchNamesAndSampleSetIds) {
    const std::string second = "dataOutline[1]";
    const std::string inGroup = "dataOutline[3].children[1]";
    const std::string sameId =
        "37: Duplicate sample id found. Sample Id:s1 is assigned to more than one dynamic node in data outline.";
    for (const auto& [choice, text] : kDocuments) {
        for (const char* const name : {"a", "Z", "a0", "aZz9", "D1", ""}) {
            ExpectFailure(Replaced(text, R"("d2")", '"' + std::string(name) + '"'), choice, "");
        }
        for (const char* const name :
             {"1", "9a", "a_b", "a-b", "a b", " a", "a.", "a[", "a`", "a{", "a/", "a:", "\u00E9"}) {
            ExpectFailure(Replaced(text, R"("d2")", "@\"" + std::string(name) + '"'), choice, BadName(second));
            ExpectFailure(Replaced(text, R"("t1")", "@\"" + std::string(name) + '"'), choice, BadName(inGroup));
        }
        ExpectFailures(text, choice,
                       {{R"("d2")", R"(@"d1")", SameName("d1", second)},
                        {R"("t1")", R"(@"n1")", SameName("n1", inGroup)},
                        {R"("t1")", R"(@"d3")", SameName("d3", inGroup)},
                        {R"("g2")", R"(@"g1")",
                         SameName("g1", choice == kV1 ? "dataOutline[3].children[3]" : "dataOutline[3].children[4]")},
                        {R"("s2")", R"(@"s1")", sameId},
                        {R"("s2")", R"("S1")", ""}});
        ExpectFailure(Replaced(Replaced(text, R"("d1")", R"("")"), R"("t1")", R"(@"")"), choice, SameName("", inGroup));
    }
    const std::string nodes = DynamicNodes("numberStringArray");
    const std::string node = nodes.substr(0, nodes.find(R"(,{"matchName":"d2")"));
    const std::string inner =
        GroupNode("g", GroupNode("h", Replaced(Replaced(node, "d1", "e1"), R"("s1")", R"(@"s1")")));
    ExpectFailure(Outline2(node + "," + inner), kV2, sameId);
    ExpectFailure(Outline2(node + "," + Replaced(inner, R"(@"s1")", R"("s2")")), kV2, "");
}

TEST(Validator, TimeInformation) {
    for (const auto& [choice, text, steps] : TimeDocuments(kUtcTimes)) {
        ExpectChecked(
            text, choice,
            {R"({"precisionLength")", steps + "utcInfo", {{"precisionLength", "Count"}, {"isGMT", "Boolean"}}});
    }
    const std::string positive = "a number greater than 0";
    const std::string noDropFrame = "41: Only 29.97 and 59.94 drop frame rate supported.";
    for (const auto& [choice, text, steps] : TimeDocuments(kTimecodes)) {
        const std::string rate = steps + "timecodeInfo.frameRate";
        ExpectChecked(text, choice,
                      {R"({"frameRate")", steps + "timecodeInfo", {{"frameRate", "Object"}, {"dropFrame", "Boolean"}}});
        ExpectChecked(text, choice, {R"({"value":30000)", rate, {{"value", "Number"}, {"scale", "Number"}}});
        ExpectFailures(text, choice,
                       {{R"("value":30000)", R"("value":@0)", WrongValue("value", positive, rate)},
                        {R"("value":30000)", R"("value":@-30000)", WrongValue("value", positive, rate)},
                        {R"("scale":1001)", R"("scale":@-0)", WrongValue("scale", positive, rate)},
                        {R"("scale":1001)", R"("scale":@-1001)", WrongValue("scale", positive, rate)},
                        {R"({"value":30000,"scale":1001})", R"(@{"value":1e-300,"scale":1e300})",
                         WrongValue("frameRate", positive, steps + "timecodeInfo")},
                        {R"({"value":30000,"scale":1001})", R"(@{"value":1e300,"scale":1e-300})",
                         WrongValue("frameRate", positive, steps + "timecodeInfo")}});
        const std::tuple<const char*, const char*, bool> rates[] = {
            {"60000", "1001", true}, {"29.97", "1", true},  {"59.94", "1", true},     {"2997", "100", true},
            {"5994", "100", true},   {"25", "1", false},    {"30", "1", false},       {"60", "1", false},
            {"29.96", "1", false},   {"59.95", "1", false}, {"24000", "1001", false}, {"119.88", "1", false}};
        for (const auto& [value, scale, hasDropFrame] : rates) {
            const std::string fraction = R"({"value":)" + std::string(value) + R"(,"scale":)" + scale + "}";
            const std::string changed =
                Replaced(text, R"({"value":30000,"scale":1001})", hasDropFrame ? fraction : "@" + fraction);
            ExpectFailure(changed, choice, hasDropFrame ? "" : noDropFrame);
            ExpectFailure(Replaced(Replaced(text, R"({"value":30000,"scale":1001})", fraction), "true}", "false}"),
                          choice, "");
        }
    }
}

TEST(Validator, VideoSync) {
    for (const auto& [choice, text, steps] : TimeDocuments(kTimecodes)) {
        const std::string list = steps + "videoSyncTimeList";
        ExpectChecked(text, choice, {R"({"fileName":"a.mov")", list + "[0]", {{"fileName", "String"}}});
        ExpectChecked(text, choice, {R"({"fileName":"b.mov")", list + "[1]", {{"fileName", "String"}}});
        ExpectFailures(
            text, choice,
            {{R"({"fileName":"a.mov")", R"(@{"timeString":"1","fileName":"a.mov")",
              SyncEntry("only one of timeString or frameNumber can", list + "[0]")},
             {R"({"fileName":"b.mov","timeString")", R"(@{"fileName":"b.mov","x")",
              SyncEntry("one of timeString or frameNumber must", list + "[1]")},
             {R"("frameNumber":7)", R"("frameNumber":@"7")", WrongType("frameNumber", "Number", list + "[0]")},
             {R"("frameNumber":7)", R"("frameNumber":@7.5)", WrongValue("frameNumber", kCount, list + "[0]")},
             {R"("frameNumber":7)", R"("frameNumber":@-1)", WrongValue("frameNumber", kCount, list + "[0]")},
             {R"("timeString":")", R"("timeString":@7,"x":")", WrongType("timeString", "String", list + "[1]")},
             {R"("videoSyncTimeList":[)", R"("videoSyncTimeList":[@"a.mov",)",
              WrongType("videoSyncTimeList", "Object", list + "[0]")}});
    }
}

TEST(Validator, DynamicDataInfo) {
    const std::string place = "dynamicDataInfo";
    const std::string noMode = "44: First property of dynamicDataInfo must be useTimecodeB, found ";
    const std::pair<std::string, std::string> cases[] = {
        {"{" + kTimecodes + "}", ""},
        {"{" + kUtcTimes + "}", ""},
        {"@{}", noMode + "."},
        {R"({"timecodeInfo":@{},"useTimecodeB":true})", noMode + "timecodeInfo."},
        {R"({"videoSyncTimeList":@[],)" + kUtcTimes + "}", noMode + "videoSyncTimeList."},
        {R"({"useTimecodeB":@1})", WrongType("useTimecodeB", "Boolean", place)},
        {R"(@{"useTimecodeB":true})", Missing("timecodeInfo", place)},
        {R"(@{"useTimecodeB":false})", Missing("utcInfo", place)},
        {R"({"useTimecodeB":true,"timecodeInfo":@[]})", WrongType("timecodeInfo", "Object", place)},
        {R"({"useTimecodeB":false,"utcInfo":@"a"})", WrongType("utcInfo", "Object", place)},
        {"{" + kTimecodes + R"(,"utcInfo":@{}})", OnlyIf("utcInfo", "false")},
        {"{" + kUtcTimes + R"(,"timecodeInfo":@{}})", OnlyIf("timecodeInfo", "true")},
        {R"({"useTimecodeB":false,"timecodeInfo":@{}})", OnlyIf("timecodeInfo", "true")},
        {"{" + kUtcTimes + R"(,"videoSyncTimeList":@{}})", WrongType("videoSyncTimeList", "Array", place)},
        {"{" + kUtcTimes + R"(,"videoSyncTimeList":[]})", ""}};
    for (const auto& [info, failure] : cases) {
        ExpectFailure(R"({"version":"vkjson2.0.0","dynamicSamplesPresentB":true,"dynamicDataInfo":)" + info +
                          R"(,"dataOutline":[]})",
                      kV2, failure);
    }
}

}  // namespace zentor_test
