// Documents as they are written, and the frame through which built-in converters make them.
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <map>

#include "failure.h"
#include "reader/parser.h"
#include "written_document.h"

namespace zentor_test {

using namespace zentor;
using namespace ZT_PLUGIN;

namespace {

const std::string kStart = "{\"version\":\"vkjson2.0.0\",\"dynamicSamplesPresentB\":";

std::string OutlineText(const std::string& nodes) { return kStart + Json("false,'dataOutline':[" + nodes + "]}"); }

std::string StaticText(const std::string& type, const std::string& value, const std::string& name = "n") {
    return "{'objectType':'dataStatic','matchName':'" + name + "','displayName':'N','dataType':{'type':" + type +
           "},'value':" + value + "}";
}

// As many groups within each other as are asked for: each with a source of its own, or all of them from one.
class NestedGroups final : public ChildSource {
public:
    NestedGroups(const ZT_ConverterHandlerBase* converter, int depth, bool hasOwnSources)
        : converter_(converter), depth_(depth), hasOwnSources_(hasOwnSources) {}
    bool Next(Child& child) override {
        if (depth_ == 0) return false;
        name_ = "g" + std::to_string(depth_);
        child = {};
        if (hasOwnSources_) {
            const auto group = NativeCreateGroup(converter_, name_, "g");
            group->SetChildSource(std::make_unique<NestedGroups>(converter_, std::exchange(depth_, 0) - 1, true));
            child.group = group;
        } else {
            --depth_;
            child.opensGroup = true;
            child.node.matchName = name_;
            child.node.displayName = "g";
        }
        return true;
    }

private:
    const ZT_ConverterHandlerBase* converter_;
    int depth_;
    bool hasOwnSources_;
    std::string name_;
};

}  // namespace

TEST(Writer, ChildrenKeepTheirOrder) {
    Document document;
    CallModel([&](auto* error) { document.root->SetCreator("say \"\\\n", error); });  // nothing is escaped
    const auto a = NativeCreateGroup(*document, "a", "A");
    const auto b = NativeCreateGroup(*document, "b", "B");
    document.Add(a);
    document.Add(NativeCreateStaticBool(*document, "n", "N", true));
    document.Add(b);
    Document::Attach(b, NativeCreateStaticBool(*document, "m", "N", false));
    Document::Attach(a, NativeCreateGroup(*document, "c", "C"));
    Document::Attach(b, NativeCreateGroup(*document, "d", "D"));
    Document::Attach(b, NativeCreateStaticBool(*document, "o", "N", true));
    EXPECT_EQ(document.Write(), 1u);
    const auto groupStart = [](const char* match, const char* display) {
        return std::string("{'objectType':'dataGroup','matchName':'") + match + "','displayName':'" + display +
               "','children':[";
    };
    const std::string expected =
        kStart +
        Json("false,'creator':'say '\\\n','dataOutline':[" + groupStart("a", "A") + groupStart("c", "C") + "]}]}," +
             StaticText("'boolean'", "true") + "," + groupStart("b", "B") + StaticText("'boolean'", "false", "m") +
             "," + groupStart("d", "D") + "]}," + StaticText("'boolean'", "true", "o") + "]}]}");
    EXPECT_EQ(document.Text(), expected);
    EXPECT_EQ(document.Write(), 0u);  // once and for all
    EXPECT_EQ(document.Text(), expected);
}

TEST(Writer, StaticNodes) {
    const auto pattern = [](const char* isSigned, int decimal, int integer) {
        return std::string("'pattern':{'isSigned':") + isSigned + ",'digitsDecimal':" + std::to_string(decimal) +
               ",'digitsInteger':" + std::to_string(integer) + "}";
    };
    const auto range = [](const std::string& value, const std::string& legal) {
        return "{'occurring':{'min':" + value + ",'max':" + value + "},'legal':{" + legal + "}}";
    };
    const auto expectNumber = [&](double value, const NumberProperties& properties, const std::string& patternText,
                                  const std::string& rangeText, const char* text) {
        Document document;
        document.Add(NativeCreateStaticNum(*document, "n", "N", value, properties));
        EXPECT_EQ(document.Write(), 1u);
        EXPECT_EQ(document.Text(),
                  OutlineText(StaticText(
                      "'number','numberStringProperties':{" + patternText + ",'range':" + rangeText + "}", text)));
    };
    expectNumber(3, {}, pattern("false", 0, 1), range("3", "'min':3,'max':3"), "3");
    expectNumber(-12.25, {}, pattern("true", 2, 2), range("-12.25", "'min':-12.25,'max':-12.25"), "-12.25");
    expectNumber(1.5e20, {}, pattern("false", 1, 1), range("1.5e+2", "'min':1.5e+2,'max':1.5e+2"), "1.5e+2");
    expectNumber(0.1, {{10, 20, true}, {-1, 2.5}}, pattern("true", 20, 10), range("0.1", "'min':-1,'max':2.5"), "0.1");
    expectNumber(0, {{0, 0, false}, {0, 0}}, pattern("false", 0, 0), range("0", "'min':0,'max':0"), "0");

    const double values[] = {1.5, -20};
    const auto expectArray = [&](std::size_t count, const NumberArrayProperties& properties,
                                 const std::string& patternText, const std::string& ranges, const std::string& names,
                                 const char* text) {
        Document document;
        document.Add(NativeCreateStaticNumArr(*document, "n", "N", std::span(values, count), properties));
        EXPECT_EQ(document.Write(), 1u);
        EXPECT_EQ(document.Text(),
                  OutlineText(StaticText(
                      "'numberArray','numberArrayProperties':{" + patternText + ",'arrayRanges':{'ranges':[" + ranges +
                          "]},'arraySize':" + std::to_string(count) + ",'arrayDisplayNames':" + names + "}",
                      text)));
    };
    const std::string unknown = range("-20", "'min':-20,'max':-20");
    expectArray(2, {}, pattern("true", 1, 2), range("1.5", "'min':1.5,'max':1.5") + "," + unknown, "[]", "[1.5,-20]");
    expectArray(2, {{4, 5, false}, {{1, 2}, {}}, {"x", ""}, true}, pattern("false", 5, 4),
                range("1.5", "'min':1,'max':2") + "," + unknown, "['x',''],'isPoint':true", "[1.5,-20]");
}

TEST(Writer, StringsOfAnyLength) {
    Document document;
    std::string expected;
    int count = 0;
    const auto add = [&](const std::string& value, const StringProperties& properties, const char* lengths) {
        const std::string name = "n" + std::to_string(count++);
        document.Add(NativeCreateStaticString(*document, name, "N", value, properties));
        expected +=
            (expected.empty() ? "" : ",") +
            StaticText("'string','paddedStringProperties':{" + std::string(lengths) + "}", "'" + value + "'", name);
    };
    add("a\tb\"", {kUnsetCount, kUnsetCount, true}, "'eventMarkerB':true");
    add("", {12345, kUnsetCount, false}, "'maxLen':12345,'eventMarkerB':false");
    // Around the sizes of the pieces in which text is collected and written, and past 1 MiB.
    for (const std::size_t length : {4095u, 4096u, 4097u, 65535u, 65536u, 65537u, 131072u, 3000001u}) {
        add(std::string(length, static_cast<char>('a' + length % 26)), {7, 2, false},
            "'maxDigitsInStrLength':2,'maxLen':7,'eventMarkerB':false");
    }
    for (std::size_t k = 0; k < 2000; ++k) {
        add(std::string(k, '.'), {}, "'maxDigitsInStrLength':0,'maxLen':0,'eventMarkerB':false");
    }
    EXPECT_EQ(document.Write(), 1u);
    EXPECT_TRUE(document.Text() == OutlineText(expected));
}

TEST(Writer, GroupsOfChildSourcesStandNoDeeperThanTheLimit) {
    for (const bool hasOwnSources : {true, false}) {
        for (const int depth : {100, 101, 5000}) {
            Document document;
            document.root->SetChildSource(std::make_unique<NestedGroups>(*document, depth, hasOwnSources));
            if (depth > 100) {
                EXPECT_EQ(document.Write(2003), 0u);
                EXPECT_EQ(document.FileCount(), 0u);
                continue;
            }
            EXPECT_EQ(document.Write(), 1u);
            std::string expected;
            for (int k = depth; k > 0; --k) {
                expected +=
                    "{'objectType':'dataGroup','matchName':'g" + std::to_string(k) + "','displayName':'g','children':[";
            }
            for (int k = depth; k > 0; --k) expected += "]}";
            EXPECT_EQ(document.Text(), OutlineText(expected));
            EXPECT_EQ(FailureOf([&] { ParseDocument(document.Text(), ParserChoice::kVersion2); }), "");
        }
    }
}

TEST(Writer, ArraysHaveElements) {
    Document document;
    const auto array = MakeOwner(new VkjsonStaticDataNumArrImpl(document.StreamId(), "a", "A"));
    document.Add(array);
    EXPECT_EQ(document.Write(2002), 0u);
    EXPECT_EQ(document.FileCount(), 0u);
    EXPECT_EQ(document.Write(), 0u) << "given up";

    Document late;  // an array may be given its elements after it is attached
    const auto filled = MakeOwner(new VkjsonStaticDataNumArrImpl(late.StreamId(), "a", "A"));
    late.Add(filled);
    const double value = 1;
    CallModel([&](auto* error) { filled->SetValues(&value, 1, error); });
    EXPECT_EQ(late.Write(), 1u);
    EXPECT_EQ(FailureOf([&] { ParseDocument(late.Text(), ParserChoice::kVersion2); }), "");
}

// Counts are written into the outline as they are given, up to what readers take.
TEST(Writer, LengthsAreCounts) {
    constexpr std::uint64_t kLargest = std::uint64_t{1} << 53;
    Document document;
    const auto text = NativeCreateStaticString(*document, "s", "S", "x", {});
    document.Add(text);
    const auto set = [&](std::uint64_t length, std::uint64_t digits) {
        ZT_ErrorRecord error{0, 77, -1, -1};
        text->SetStringProperties(length, digits, 0, &error);
        return error.code;
    };
    EXPECT_EQ(set(kLargest, kLargest), 0u);
    EXPECT_EQ(set(kLargest + 1, 1), 2008u);
    EXPECT_EQ(set(1, kUnsetCount - 1), 2008u);
    EXPECT_EQ(document.Write(), 1u);
    EXPECT_NE(document.Text().find("\"maxLen\":9007199254740992,"), std::string::npos);
    EXPECT_EQ(FailureOf([&] { ParseDocument(document.Text(), ParserChoice::kVersion2); }), "");
}

TEST(Writer, SyncTimesAreOfTheTimeMode) {
    Document document;
    CallModel([&](auto* error) { document.root->AddVideoSyncTime("v", "00:00:01:00", error); });
    CallModel([&](auto* error) { document.root->SetUtcInfo(0, 1, error); });
    EXPECT_EQ(FailureOf([&] { CallModel([&](auto* error) { document.root->WriteHeader(error); }); }),
              "2012: Writer failure.");
    EXPECT_EQ(FailureOf([&] { CallModel([&](auto* error) { document.root->WriteHeader(error); }); }),
              "2003: Internal converter failure")
        << "given up";
    EXPECT_EQ(document.Write(), 0u);
    EXPECT_EQ(document.FileCount(), 0u);
}

TEST(Writer, HeaderWithoutSamplesIsTakenBack) {
    const std::string timecode = Json(
        "true,'dynamicDataInfo':{'useTimecodeB':true,'timecodeInfo':{'frameRate':{'value':30000,'scale':1001},"
        "'dropFrame':true},'videoSyncTimeList':[{'fileName':'v','frameNumber':4294967295},{'fileName':'w','timeString':"
        "'00:00:01;00'}]}");
    const std::string utc =
        Json("true,'dynamicDataInfo':{'useTimecodeB':false,'utcInfo':{'precisionLength':3,'isGMT':true}}");
    for (const std::string& mode : {timecode, utc, std::string("false")}) {
        for (const int headers : {0, 1, 2}) {
            Document document;
            if (mode != "false") {
                CallModel([&](auto* error) { document.root->SetTimecodeInfo(1, 30000, 1001, error); });
            }
            if (mode == timecode) {
                CallModel([&](auto* error) { document.root->AddVideoSyncFrame("v", 0xFFFFFFFF, error); });
                CallModel([&](auto* error) { document.root->AddVideoSyncTime("w", "00:00:01;00", error); });
            } else if (mode == utc) {
                CallModel([&](auto* error) { document.root->SetUtcInfo(3, 1, error); });
            }
            for (int k = 0; k < headers; ++k) {
                CallModel([&](auto* error) { document.root->WriteHeader(error); });
                EXPECT_EQ(document.Text(), kStart + mode);
            }
            EXPECT_EQ(document.Write(), 1u);
            EXPECT_EQ(document.Text(), OutlineText(""));
        }
    }
}

TEST(Writer, EveryFileOperationFails) {
    // A fault where the kind of the path is asked for counts as "there is nothing".
    std::map<std::string, std::uint32_t> codes = {{"File_IO::GetFileMode", 0},
                                                  {"File_IO::Create", 1007},
                                                  {"File_IO::Open", 1006},
                                                  {"File_IO::SetEOF", 1010},
                                                  {"File_IO::Close", 1008}};
    const std::string longText(100000, 'x');
    for (const os::Status status : {os::Status::kFailed, os::Status::kDiskFull, os::Status::kBadPath}) {
        codes["File_IO::Write"] = status == os::Status::kDiskFull ? 1034 : 1055;
        int failures = 0;
        for (int n = 1;; ++n) {
            Document document;
            document.Add(NativeCreateStaticString(*document, "s", "s", longText, {}));
            CallModel([&](auto* error) { document.root->SetUtcInfo(3, 1, error); });
            const FileFault fault("", n, status);
            ZT_ErrorRecord headerError{0, 77, -1, -1};
            ZT_ErrorRecord error{0, 77, -1, -1};
            document.root->WriteHeader(&headerError);
            const std::uint32_t written = document.root->WriteDocument(&error);
            if (fault.Struck().empty()) {
                EXPECT_EQ(written, 1u);
                break;
            }
            const std::uint32_t code = status == os::Status::kBadPath ? 1012 : codes.at(fault.Struck());
            EXPECT_EQ(headerError.code + error.code, code) << fault.Struck();  // one of them
            EXPECT_EQ(written, code == 0 ? 1u : 0u) << fault.Struck();
            if (code == 0) continue;
            ++failures;
            EXPECT_EQ(document.FileCount(), 0u) << fault.Struck();
            EXPECT_EQ(document.Write(), 0u);
            EXPECT_EQ(document.FileCount(), 0u) << fault.Struck();
        }
        EXPECT_GE(failures, 7);
    }
    // A document that is given up half way is no document.
    Document abandoned;
    CallModel([&](auto* error) { abandoned.root->WriteHeader(error); });
    EXPECT_EQ(abandoned.FileCount(), 1u);
    abandoned.Close();
    EXPECT_EQ(abandoned.FileCount(), 0u);
    EXPECT_EQ(abandoned.Write(2014), 0u);
}

TEST(NativeFrame, Failures) {
    const Document document;
    const auto* const converter = *document;
    const double values[] = {1, 2};
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const std::string null = "1: Invalid pointer to \"Native converter\".";
    EXPECT_EQ(FailureOf([] { NativeCreateRoot(nullptr, 1); }), null);
    EXPECT_EQ(FailureOf([&] { NativeCreateRoot(converter, 0); }), "2011: Writer failure.");
    EXPECT_EQ(FailureOf([&] { NativeCreateGroup(std::make_unique<NoConverter>(ConversionInfo{}).get(), "g", "g"); }),
              "2011: Writer failure.");
    EXPECT_EQ(FailureOf([&] { NativeCreateRoot(converter, converter->Info().streamId); }),
              "2003: Internal converter failure")
        << "it has one";
    EXPECT_EQ(FailureOf([&] { NativeCreateGroup(converter, "", "g"); }), "2022: Internal converter failure");
    EXPECT_EQ(FailureOf([&] { NativeCreateStaticNumArr(converter, "a", "a", {}, {}); }),
              "2002: Internal converter failure");
    EXPECT_EQ(FailureOf([] { NativeCreateGroup(nullptr, "g", "g"); }), null);
    EXPECT_EQ(FailureOf([] { NativeCreateStaticNum(nullptr, "n", "n", 1, {}); }), null);
    EXPECT_EQ(FailureOf([&] { NativeCreateStaticNumArr(nullptr, "n", "n", values, {}); }), null);
    EXPECT_EQ(FailureOf([] { NativeCreateStaticString(nullptr, "s", "s", "", {}); }), null);
    EXPECT_EQ(FailureOf([] { NativeCreateStaticBool(nullptr, "b", "b", true); }), null);
    const auto number = [&](double value, const NumberProperties& properties) {
        return FailureOf([&] { NativeCreateStaticNum(converter, "n", "n", value, properties); });
    };
    const auto array = [&](const NumberArrayProperties& properties) {
        return FailureOf([&] { NativeCreateStaticNumArr(converter, "n", "n", values, properties); });
    };
    const std::string text = ": Internal converter failure";
    EXPECT_EQ(number(kInfinity, {}), "2008" + text);
    EXPECT_EQ(number(1, {{1, kUnsetCount, false}, {}}), "2006" + text);
    EXPECT_EQ(number(1, {{}, {2, 0}}), "2007" + text);
    EXPECT_EQ(number(1, {{}, {2, 3}}), "2008" + text);
    EXPECT_EQ(array({{kUnsetCount, 1, false}, {}, {}}), "2006" + text);
    EXPECT_EQ(array({{}, {{0, 9}}, {}}), "2005" + text);
    EXPECT_EQ(array({{}, {{0, 9}, {0, 1}}, {}}), "2008" + text);
    EXPECT_EQ(array({{}, {}, {"x", "y", "z"}}), "2019" + text);
    EXPECT_EQ(array({{}, {{0, 9}, {2, 2}}, {"x", "y"}}), "");
}

}  // namespace zentor_test
