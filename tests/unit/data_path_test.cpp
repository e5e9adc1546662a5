// Data paths, and what they lead to.
#include <sstream>

#include "documents.h"
#include "files/document_record.h"
#include "reader/sensor_file_handler.h"
#include "test_folder.h"

namespace zentor_test {

using namespace zentor;

namespace {

// The items after the root, as "name/index ".
std::string Items(const ZT_DataPath& path) {
    EXPECT_EQ(path.items.at(0).matchName, "dataOutline");
    EXPECT_EQ(path.items.at(0).index, -1);
    std::string text;
    for (std::size_t i = 1; i < path.items.size(); ++i) {
        text += path.items[i].matchName + '/' + std::to_string(path.items[i].index) + ' ';
    }
    return text;
}

std::string NoBracket(const std::string& bracket, int position) {
    return (bracket == "[" ? "33" : "45") + std::string(": Missing ") + bracket +
           " at or after index :" + std::to_string(position) + ".";
}
std::string NotFound(const std::string& wanted, const std::string& found) {
    return "33: \"" + wanted + " data node\" not found at input path, Found node type: \"" + found + " data node\".";
}

const std::string kNotAGroup = "33: Leaf node is not a group node.";

class Nodes : public testing::TestWithParam<bool> {
protected:
    NodeNumber Find(const std::string& path) const { return document_.Find(path); }
    ZT_StaticDataInfo Static(const std::string& path) const { return document_.Static(Find(path)); }
    ZT_DynamicDataInfo Dynamic(const std::string& path) const { return document_.Dynamic(Find(path)); }

    const bool isV2_ = GetParam();
    const std::string text_ = isV2_ ? Document2() : Document1();
    const OpenText document_{text_, ParserChoice::kProbe};
};

// The type in words, with what the document says of it.
std::string Describe(const ZT_DataType& type) {
    std::ostringstream text;
    text << type.type << ", pattern " << type.pattern.isSigned << ' ' << type.pattern.digitsInteger << ' '
         << type.pattern.digitsDecimal << ", string " << type.maxLen << ' ' << type.maxDigitsInStrLength << ' '
         << type.eventMarkerB << ", array " << type.arraySize << ' ' << type.isPoint;
    for (const std::string& name : type.arrayDisplayNames) text << ' ' << name;
    for (const ZT_NumberRange& range : type.ranges) {
        text << ", range " << range.occurringMin << ' ' << range.occurringMax << ' ' << range.legalMin << ' '
             << range.legalMax;
    }
    return text.str();
}
std::string NumberType(const std::string& type) {
    return type + ", pattern 1 3 2, string -1 -1 0, array -1 0, range -4.5 4.25 -100 100";
}
std::string StringType(const std::string& type) { return type + ", pattern 0 -1 -1, string 4 1 0, array -1 0"; }
std::string ArrayType(const std::string& type) {
    return type + ", pattern 0 1 0, string -1 -1 0, array 2 1 x y, range 1 5 0 8, range 2 6 0 9";
}

}  // namespace

TEST(DataPath, Texts) {
    const std::pair<const char*, const char*> cases[] = {{"[0]", "/0 "},
                                                         {R"(["data1"])", "data1/-1 "},
                                                         {R"([2]["name"][10])", "/2 name/-1 /10 "},
                                                         {R"(x[1], y["b"])", "/1 b/-1 "},
                                                         {R"(["dataOutline"])", ""},
                                                         {R"(["dataOutline"][1]["dataOutline"])", "/1 dataOutline/-1 "},
                                                         {"[]", "/-1 "},
                                                         {"[x][1x][0x1][ 1]", "/-1 /-1 /-1 /-1 "},
                                                         {R"([""])", "/-1 "},
                                                         {R"(["a[b"][1])", "a[b/-1 /1 "},
                                                         {R"(["a"b][007])", "a/-1 /7 "}};
    for (const auto& [text, items] : cases) {
        std::string read;
        EXPECT_EQ(FailureOf([&] { read = Items(ParseDataPath(text)); }), "") << text;
        EXPECT_EQ(read, items) << text;
    }
    const std::pair<const char*, std::string> failures[] = {{"", "1: Empty ZT_DataPath string."},
                                                            {"abc", NoBracket("[", 0)},
                                                            {"[0]x", NoBracket("[", 3)},
                                                            {"[0] ", NoBracket("[", 3)},
                                                            {"]", NoBracket("[", 0)},
                                                            {R"(["a]b"])", NoBracket("[", 4)},
                                                            {"[", NoBracket("]", 0)},
                                                            {"[0", NoBracket("]", 0)},
                                                            {R"(["a")", NoBracket("]", 0)},
                                                            {R"([0]["name")", NoBracket("]", 3)},
                                                            {"ab[0][1", NoBracket("]", 5)}};
    for (const auto& [text, failure] : failures) {
        EXPECT_EQ(FailureOf([&] { ParseDataPath(text); }), failure) << text;
    }
}

TEST_P(Nodes, AreFoundAlongPaths) {
    EXPECT_EQ(Find(R"(["dataOutline"])"), kRootNode);
    const std::pair<const char*, const char*> cases[] = {
        {"[0]", "d1"},          {R"(["d3"])", "d3"},    {"[3]", "g1"},
        {R"([3]["t1"])", "t1"}, {R"(["g1"][2])", "a1"}, {R"(["dataOutline"]["g1"]["g2"])", "g2"}};
    for (const auto& [path, name] : cases) {
        EXPECT_EQ(FailureOf([&] { EXPECT_EQ(document_.Child(Find(path)).matchName, name) << path; }), "") << path;
    }
    const std::string count = isV2_ ? "5" : "4";
    const std::pair<const char*, std::string> failures[] = {
        {"[]", "33: Either index or match name must be present, both are missing at path item 1."},
        {"[3][-1]", "33: Either index or match name must be present, both are missing at path item 2."},
        {"[4]", "33: Invalid node index, 4 child nodes present for node at path item :1. Input index : 4."},
        {"[3][9]",
         "33: Invalid node index, " + count + " child nodes present for node at path item :2. Input index : 9."},
        {R"(["n1"])", "33: No node found with match name : n1."},
        {R"([3]["d1"])", "33: No node found with match name : d1."},
        {R"([3]["T1"])", "33: No node found with match name : T1."},
        {R"([3]["t"])", "33: No node found with match name : t."},
        {"[0][0]",
         "33: Node at path item:1 is not of type dataGroup. All intermediate nodes must be of type dataGroup."},
        {R"([3]["n1"]["x"])",
         "33: Node at path item:2 is not of type dataGroup. All intermediate nodes must be of type dataGroup."}};
    for (const auto& [path, failure] : failures) EXPECT_EQ(FailureOf([&] { Find(path); }), failure) << path;
}

TEST_P(Nodes, PathsOfItemsAreChecked) {
    const std::string noRoot =
        "33: Missing ZT_DataPath ROOT_INDEX or ROOT_MATCHNAME. Path must start with ROOT_INDEX or ROOT_MATCHNAME";
    const std::pair<ZT_DataPath, std::string> cases[] = {
        {{{{"", -1}, {"g1", 3}}}, ""},
        {{{{"dataOutline", -1}, {"", 3}, {"a1", 2}}}, ""},
        {{}, noRoot},
        {{{{"", 0}}}, noRoot},
        {{{{"dataOutline", 0}, {"g1", 3}}}, noRoot},
        {{{{"g1", -1}}}, noRoot},
        {{{{"", -1}, {"g1", 3}, {"a1", 1}}},
         "33: t1:Match name found for child Node at index 1 for path item 2,Input match name:a1."}};
    for (const auto& [path, failure] : cases) {
        EXPECT_EQ(FailureOf([&] { document_.queries().FindNode(path); }), failure) << path.ToString();
    }
}

TEST_P(Nodes, OfOtherKindsAreRefused) {
    EXPECT_EQ(FailureOf([&] { Static("[0]"); }), NotFound("Static", "Dynamic"));
    EXPECT_EQ(FailureOf([&] { Static("[3]"); }), NotFound("Static", "Group"));
    EXPECT_EQ(FailureOf([&] { Dynamic("[3][0]"); }), NotFound("Dynamic", "Static"));
    EXPECT_EQ(FailureOf([&] { document_.Dynamic(kRootNode); }), NotFound("Dynamic", "Group"));
    EXPECT_EQ(FailureOf([&] { document_->outline.ChildrenOf(Find("[0]")); }), kNotAGroup);
    EXPECT_EQ(FailureOf([&] { document_->outline.ChildrenOf(Find("[3][1]")); }), kNotAGroup);
}

TEST_P(Nodes, DynamicRecords) {
    const ZT_DynamicDataInfo info = Dynamic("[0]");
    EXPECT_EQ(info.displayName + ' ' + info.matchName + ' ' + info.sampleSetID, "Speed d1 s1");
    EXPECT_EQ(info.interpolation, "linear");
    EXPECT_TRUE(info.hasExpectedFrequencyB);
    EXPECT_EQ(info.sampleCount, 2u);
    EXPECT_EQ(info.expectedMaxInterSampleDuration, "00:00:00:01");
    EXPECT_EQ(Describe(info.dataType), NumberType("numberString"));
    const ZT_DynamicDataInfo other = Dynamic("[1]");
    EXPECT_EQ(other.interpolation, "hold");
    EXPECT_FALSE(other.hasExpectedFrequencyB);
    EXPECT_EQ(other.expectedMaxInterSampleDuration, "");
    EXPECT_EQ(Describe(other.dataType), StringType("paddedString"));
    EXPECT_EQ(Describe(Dynamic("[2]").dataType), ArrayType(isV2_ ? "numberStringArray" : "numberArray"));
}

TEST_P(Nodes, StaticRecords) {
    const ZT_StaticDataInfo number = Static("[3][0]");
    EXPECT_EQ(number.displayName + ' ' + number.matchName, "Static n1 n1");
    EXPECT_EQ(boost::get<double>(number.value), 2.5);
    EXPECT_EQ(Describe(number.dataType), NumberType(isV2_ ? "number" : "numberString"));
    const ZT_StaticDataInfo string = Static("[3][1]");
    EXPECT_EQ(boost::get<std::string>(string.value), "ab");
    EXPECT_EQ(Describe(string.dataType), StringType(isV2_ ? "string" : "paddedString"));
    const ZT_StaticDataInfo array = Static("[3][2]");
    EXPECT_EQ(boost::get<std::vector<double>>(array.value), (std::vector<double>{3, 4}));
    EXPECT_EQ(Describe(array.dataType), ArrayType("numberArray"));
    if (isV2_) {
        const ZT_StaticDataInfo flag = Static("[3][3]");
        EXPECT_TRUE(boost::get<bool>(flag.value));
        EXPECT_EQ(Describe(flag.dataType), "boolean, pattern 0 -1 -1, string -1 -1 0, array -1 0");
    } else {
        EXPECT_EQ(boost::get<double>(Static(R"(["g1"]["g2"]["n2"])").value), 7);
    }
}

TEST_P(Nodes, RecordsWithoutWhatIsOptional) {
    std::string text = Replaced(text_, Samples(isV2_ ? kTimecodes : kUtcTimes) + ",", "");
    for (const char* const name : {"digitsInteger", "digitsDecimal", "maxLen", "maxDigitsInStrLength", "digitsInteger",
                                   "arraySize", "arrayDisplayNames", "isPoint"}) {
        text = Replaced(text, '"' + std::string(name) + '"', "\"x\"");
    }
    text = Replaced(text, R"("hasExpectedFrequencyB":true)", R"("hasExpectedFrequecyB":true)");
    text = Replaced(text, "\"occurring\"", "\"occuring\"");
    const OpenText read(text, ParserChoice::kProbe);
    const ZT_DynamicDataInfo number = read.Dynamic(read.Find("[0]"));
    EXPECT_TRUE(number.hasExpectedFrequencyB);
    EXPECT_EQ(number.expectedMaxInterSampleDuration, "00:00:00:01");
    EXPECT_EQ(Describe(number.dataType), Replaced(NumberType("numberString"), "1 3 2", "1 -1 -1"));
    EXPECT_EQ(Describe(read.Dynamic(read.Find("[1]")).dataType),
              Replaced(StringType("paddedString"), "4 1 0", "-1 -1 0"));
    EXPECT_EQ(Describe(read.Dynamic(read.Find("[2]")).dataType),
              Replaced(Replaced(ArrayType(isV2_ ? "numberStringArray" : "numberArray"), "0 1 0", "0 -1 0"), "2 1 x y",
                       "-1 0"));
}

// By way of a handler, which makes the paths.
TEST_P(Nodes, ChildPathsHandedBackReachTheChildren) {
    const TestFolder folder;
    const auto record = std::make_shared<DocumentRecord>();
    record->documentPath = folder.Write("a.vkjson", text_);
    SensorFileHandlerImpl handler(record->documentPath, record, ReadOptions());
    std::vector<std::string> names;
    ZT_GroupChildren children;
    ASSERT_EQ(handler.GetRootChildren(&children), 0u);
    for (std::vector<ZT_DataPath> open = children.paths; !open.empty();) {
        const ZT_DataPath path = open.back();
        open.pop_back();
        ZT_GroupChildInfo info;
        ASSERT_EQ(handler.GetGroupChildInfo(path.ToString().c_str(), &info), 0u) << path.ToString();
        EXPECT_EQ(path.items.back().matchName, info.matchName) << path.ToString();
        EXPECT_EQ(document_.Child(document_.queries().FindNode(path)).matchName, info.matchName);
        names.push_back(info.matchName);
        const bool isGroup = info.nodeType == ZT_NODE_GROUP;
        EXPECT_EQ(handler.GetGroupChildren(path.ToString().c_str(), &children), isGroup ? 0u : 33u);
        EXPECT_TRUE(isGroup || children.paths.empty());
        open.insert(open.end(), children.paths.begin(), children.paths.end());
    }
    const std::vector<std::string> expected =
        isV2_ ? std::vector<std::string>{"g1", "g2", "b1", "a1", "t1", "n1", "d3", "d2", "d1"}
              : std::vector<std::string>{"g1", "g2", "n2", "a1", "t1", "n1", "d3", "d2", "d1"};
    EXPECT_EQ(names, expected);
}

INSTANTIATE_TEST_SUITE_P(BothVersions, Nodes, testing::Bool(),
                         [](const auto& version) { return version.param ? "V2" : "V1"; });

TEST(DataPath, OutlineWithoutNodes) {
    const std::string text = Outline2("");
    const OpenText read(text, ParserChoice::kProbe);
    EXPECT_EQ(FailureOf([&] { read.Find("[0]"); }),
              "33: Invalid node index, 0 child nodes present for node at path item :1. Input index : 0.");
    EXPECT_EQ(read.index().ChildrenOf(kRootNode).count, 0u);
}

}  // namespace zentor_test
