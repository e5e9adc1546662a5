// The two ways to read an outline agree, and every node is found again whatever its text looks like.
#include <algorithm>
#include <numeric>
#include <random>

#include "documents.h"
#include "reader/outline_check.h"
#include "reader/outline_scan.h"
#include "reader/unique_names.h"

namespace zentor_test {

using namespace zentor;

namespace {

constexpr auto kIgnorePassed = [](std::size_t) {};

std::size_t OutlineOffset(const std::string& text) { return text.find("\"dataOutline\":") + 14; }

std::optional<OutlineContents> Scanned(const std::string& text) {
    std::size_t offset = OutlineOffset(text);
    auto contents = ScanOutline(text, offset, kIgnorePassed);
    EXPECT_EQ(offset, contents ? text.rfind(']') + 1 : OutlineOffset(text)) << text;
    return contents;
}

OutlineContents Checked(const std::string& text) {
    std::size_t offset = OutlineOffset(text);
    OutlineContents contents = CheckOutline(text, offset, ZT_VkjsonValidator_v2(), kIgnorePassed);
    EXPECT_EQ(offset, text.rfind(']') + 1) << text;
    return contents;
}

// Kinds, places and children of all nodes below a group.
void Describe(const OutlineIndex& index, NodeNumber group, std::string& text) {
    const OutlineIndex::Children children = index.ChildrenOf(group);
    text += '(';
    for (NodeNumber node = children.first; node != children.first + children.count; ++node) {
        text += std::to_string(index.TypeOf(node)) + '@' + std::to_string(index.OffsetOf(node)) + ' ';
        if (index.TypeOf(node) == ZT_NODE_GROUP) Describe(index, node, text);
    }
    text += ')';
}

std::string Describe(const OutlineContents& contents) {
    std::string text;
    Describe(contents.index, kRootNode, text);
    for (const SampleSet& set : contents.sets) {
        const RecordLayout& layout = set.layout;
        for (const std::uint64_t number : {static_cast<std::uint64_t>(layout.kind), set.count, layout.pattern.Width(),
                                           layout.arraySize, layout.maxLength, layout.lengthDigits}) {
            text += ' ' + std::to_string(number);
        }
        text += ' ' + set.id;
    }
    return text;
}

std::string FirstDynamicNode() {
    const std::string nodes = DynamicNodes("numberStringArray");
    return nodes.substr(0, nodes.find(R"(,{"matchName":"d2")"));
}

class RandomOutline {
public:
    explicit RandomOutline(unsigned seed) : random_(seed), space_(random_() % 3 == 0) {}

    std::string Nodes(int depth) {
        std::string nodes;
        for (std::size_t count = random_() % 5; count != 0; --count) {
            nodes += (nodes.empty() ? Space() : Space() + "," + Space()) + Node(depth);
        }
        return nodes + Space();
    }

private:
    std::string Space() { return space_ && random_() % 2 == 0 ? " \n" : ""; }
    std::string Node(int depth) {
        const std::string name = (random_() % 2 == 0 ? "n" : "data") + std::to_string(next_++);
        const std::string array = R"("numberArray",)" + kArrayProperties;
        switch (random_() % 6) {
            case 0:
                return GroupNode(name, depth == 0 ? "" : Nodes(depth - 1));
            case 1:
                return StaticNode(name, R"("number",)" + kNumberProperties, "-0.25e-7");
            case 2:
                return StaticNode(name, R"("string",)" + kStringProperties, R"("a\"]}b")");
            case 3:
                return StaticNode(name, array, "[1, 2.5 ,-3]");
            case 4:
                return StaticNode(name, "\"boolean\"", "false");
            default:
                return Replaced(Replaced(FirstDynamicNode(), "\"s1\"", "\"" + name + "\""), "\"d1\"",
                                "\"" + name + "\"");
        }
    }

    std::mt19937 random_;
    bool space_;
    int next_ = 0;
};

}  // namespace

TEST(OutlineReading, PlainOutlinesAreTakenAndReadAlike) {
    ASSERT_TRUE(Scanned(Document2()));
    EXPECT_EQ(Describe(*Scanned(Document2())), Describe(Checked(Document2())));
    std::size_t nodes = 0;
    for (unsigned seed = 0; seed < 400; ++seed) {
        const std::string text = Outline2(RandomOutline(seed).Nodes(5));
        const auto scanned = Scanned(text);
        ASSERT_TRUE(scanned) << text;
        EXPECT_EQ(Describe(*scanned), Describe(Checked(text))) << text;
        if (seed % 10 == 0) nodes += WalkNodes(OpenText(text, ParserChoice::kVersion2));
    }
    EXPECT_GT(nodes, 100U);
}

TEST(OutlineReading, OthersAreLeftToTheLongWay) {
    const std::string good = Document2();
    const std::pair<const char*, const char*> changes[] = {
        {R"("eventMarkerB":false)", R"("eventMarkerB":false,"x":1)"},  // a member that means nothing
        {R"("isPoint":true)", R"("isPoint":true,"isPoint":true)"},
        {R"("isSigned":true)", R"("\u0069sSigned":true)"},
        {R"("digitsInteger":3)", R"("digitsInteger":3e0)"},
        {R"("max":4.25)", R"("max":1e308)"},
        {R"("interpolation":"hold")", R"("expectedMaxInterSampleDuration":7,"interpolation":"hold")"},
        {R"("matchName":"g1","objectType":"dataGroup")", R"("objectType":"dataGroup","matchName":"\u0067x")"}};
    for (const auto& [from, to] : changes) {
        const std::string text = Replaced(good, from, to);
        EXPECT_FALSE(Scanned(text)) << to;
        Checked(text);
    }
}

TEST(OutlineReading, GroupsWhoseMembersGoOnAfterTheirChildren) {
    const std::string leaf = StaticNode("leaf", "\"boolean\"", "true");
    const std::string inner =
        R"({"children":[)" + leaf +
        R"(],"objectType":"dataGroup","children":[1],"displayName":"In\u006eer","matchName":"in"})";
    const std::string outer = R"({"x":[{"children":[3]}],"displayName":"Outer","children":[)" + inner + "," +
                              StaticNode("last", "\"boolean\"", "false") + R"(],"long":")" + std::string(10000, '}') +
                              R"(","matchName":"out","objectType":"dataGroup"})";
    const std::string odd =
        Replaced(StaticNode("odd", "\"boolean\"", "true"), "\"value\"",
                 R"("children":[{"children":[1],"a":2}],"x":[)" + std::string(5000, ' ') + R"(],"value")");
    const std::string text = Outline2(outer + "," + odd);
    const OpenText document(text, ParserChoice::kVersion2);
    EXPECT_EQ(WalkNodes(document), 5U);
    EXPECT_EQ(document.Child(document.Find(R"(["out"]["in"])")).displayName, "Inner");
    EXPECT_EQ(document.Child(document.Find("[0]")).displayName, "Outer");
    EXPECT_TRUE(boost::get<bool>(document.Static(document.Find(R"(["out"][0]["leaf"])")).value));
    EXPECT_EQ(document.Child(document.Find("[1]")).matchName, "odd");
}

TEST(OutlineReading, NodesLongerThanWhatIsReadAtOnce) {
    for (const std::size_t length : {900U, 1100U, 2100U, 70000U, 300000U}) {
        const std::string value(length, 'v');
        const std::string text =
            Outline2(R"({"objectType":"dataStatic","displayName":")" + value +
                     R"(","dataType":{"type":"string","paddedStringProperties":{"eventMarkerB":false}},"value":")" +
                     value + R"(","matchName":"late"},)" + StaticNode("next", "\"boolean\"", "true"));
        const OpenText document(text, ParserChoice::kVersion2);
        EXPECT_EQ(WalkNodes(document), 2U);
        const ZT_StaticDataInfo info = document.Static(document.Find("[\"late\"]"));
        EXPECT_EQ(boost::get<std::string>(info.value), value);
        EXPECT_EQ(info.displayName, value);
    }
}

TEST(UniqueNames, OneThatComesTwiceIsFound) {
    std::mt19937 random(1);
    for (const std::size_t count : {2U, 100U, 20000U}) {
        std::vector<std::string> names;
        for (std::size_t i = 0; i < count; ++i) names.push_back("name" + std::to_string(i));
        const auto risesAll = [&] {
            RisingNames rising;
            return std::all_of(names.begin(), names.end(), [&](const std::string& name) { return rising.Add(name); });
        };
        const auto areUnique = [&] {
            NameHashes hashes;
            for (const std::string& name : names) hashes.Add(name);
            return hashes.AreUnique();
        };
        EXPECT_TRUE(risesAll());
        EXPECT_TRUE(areUnique());
        std::shuffle(names.begin(), names.end(), random);
        EXPECT_TRUE(areUnique());
        names[random() % (count - 1)] = names.back();
        EXPECT_FALSE(areUnique());
        EXPECT_FALSE(risesAll());
    }
    const std::pair<std::vector<std::string>, bool> series[] = {
        {{"a", "a1", "a2", "b", "a10", "b0", "ab1", "ab2x", "a11"}, true},
        {{"a2", "a10", "a9"}, false},
        {{"a01", "a1"}, false},  // nothing is known
        {{"a1b2", "a1b2"}, false},
        {{"", "a", ""}, false},
        {{"a", "b", "c", "d", "e", "f", "g", "h", "i"}, false}};
    for (const auto& [names, rises] : series) {
        RisingNames rising;
        bool all = true;
        for (const std::string& name : names) all = all && rising.Add(name);
        EXPECT_EQ(all, rises) << names.front();
    }
}

// Whatever the order of many names, the second of two equal ones is what is wrong.
TEST(UniqueNames, InOutlines) {
    for (const bool shuffled : {false, true}) {
        std::vector<int> numbers(3000);
        std::iota(numbers.begin(), numbers.end(), 0);
        if (shuffled) std::shuffle(numbers.begin(), numbers.end(), std::mt19937(1));
        const auto outline = [&](std::size_t second, int number) {
            std::string nodes;
            for (std::size_t i = 0; i < numbers.size(); ++i) {
                const std::string name = "n" + std::to_string(i == second ? number : numbers[i]);
                nodes += (i == 0 ? "" : ",") +
                         Replaced(StaticNode(name, "\"boolean\"", "true"), "\"n", i == second ? "@\"n" : "\"n");
            }
            return Outline2(nodes);
        };
        ExpectFailure(outline(numbers.size(), 0), ParserChoice::kVersion2, "");
        ExpectFailure(outline(2500, numbers[20]), ParserChoice::kVersion2,
                      "40: Duplicate MatchName:n" + std::to_string(numbers[20]) +
                          " at \"dataOutline[2500]\". MatchName must be unique for every node in \"dataOutline\".");
    }
}

}  // namespace zentor_test
