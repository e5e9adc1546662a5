// Samples asked for by time, as a host does it.
#include <gtest/gtest.h>

#include "client_log.h"
#include "recording_host.h"
#include "test_folder.h"

namespace {

using namespace zentor_test;

// Nodes [0] to [2] have samples at 1.5, 2.5, 3.5 and 4.5 s: numbers, pairs of numbers and texts. [3] has no samples,
// and the set of [4] would end past the file. `third`: the number of the third sample.
std::string Document(bool isVersion2, bool isUtc, const std::string& third = "\"+3\"") {
    const std::string range = R"({"occurring":{"min":0,"max":9},"legal":{"min":0,"max":9}})";
    const std::string pattern = R"(Properties":{"pattern":{"isSigned":true,"digitsInteger":1,"digitsDecimal":0},)";
    const std::string number = R"("numberString","numberString)" + pattern + R"("range":)" + range + "}";
    const std::string pair = (isVersion2 ? R"("numberStringArray","numberArray)" : R"("numberArray","numberArray)") +
                             pattern + R"("arraySize":2,"arrayRanges":{"ranges":[)" + range + "," + range + "]}}";
    const std::string text =
        R"("paddedString","paddedStringProperties":{"maxLen":3,"maxDigitsInStrLength":1,"eventMarkerB":false})";
    const std::string times = isUtc ? R"("useTimecodeB":false,"utcInfo":{"precisionLength":1,"isGMT":true})"
                                    : R"("useTimecodeB":true,"timecodeInfo":{"frameRate":{"value":25,"scale":1},)"
                                      R"("dropFrame":false})";
    const std::string quote = isVersion2 ? "\"" : "";
    const std::string numbers[] = {"\"+1\"", "\"-2\"", third, "\"+4\""};
    std::string sets[5];
    for (std::size_t i = 0; i < 4; ++i) {
        const std::string second = "00:00:0" + std::to_string(i + 1);
        const std::string sample = (i == 0 ? R"({"time":")" : R"(,{"time":")") +
                                   (isUtc ? "1970-01-01T" + second + ".5Z" : second + ":12") + R"(","value":)";
        sets[0] += sample + numbers[i] + "}";
        sets[1] += sample + "[" + numbers[i] + ",\"+0\"]}";
        sets[2] += sample + R"({"length":)" + quote + std::to_string(i) + quote + R"(,"str":"abc"}})";
        sets[4] = sets[0];
    }
    const std::pair<std::string, std::string> kinds[] = {
        {"4", number}, {"4", pair}, {"4", text}, {"0", number}, {"9000", number}};
    std::string nodes;
    std::string samples;
    for (std::size_t i = 0; i < 5; ++i) {
        const std::string id(1, static_cast<char>('a' + i));
        nodes += (i == 0 ? "" : ",") + (R"({"objectType":"dataDynamic","displayName":"","matchName":")" + id) +
                 R"(","sampleSetID":")" + id + R"(","interpolation":"linear","hasExpectedFrequencyB":false,)" +
                 R"("sampleCount":)" + kinds[i].first + R"(,"dataType":{"type":)" + kinds[i].second + "}}";
        samples += (i == 0 ? "" : ",") + (R"({"sampleSetID":")" + id) + R"(","samples":[)" + sets[i] + "]}";
    }
    const std::string head = R"({"version":"vkjson2.0.0","dynamicSamplesPresentB":true,"dynamicDataInfo":{)";
    return (isVersion2 ? head + times + "}" : "{" + times) + R"(,"dataOutline":[)" + nodes +
           R"(],"dataDynamicSamples":[)" + samples + "]}";
}

}  // namespace

TEST(Samples, ClientFormsGiveTheSamplesOfTheRecords) {
    const TestFolder folder;
    Manager manager;
    for (const bool isVersion2 : {true, false}) {
        for (const bool isUtc : {true, false}) {
            OpenDocument document(manager, folder.Write("a.vkjson", Document(isVersion2, isUtc)));
            for (const char* path : {"[0]", "[\"b\"]", "[2]"}) {
                const std::pair<ZT_Time, ZT_Time> ranges[] = {
                    {{3, 2}, {9, 2}}, {{5, 2}, {5, 2}}, {{4, 1}, {2, 1}}, {{-1, 1}, {100000, 1}}};
                for (const auto& [start, end] : ranges) {
                    DynamicDataSampleSet between;
                    DynamicDataSampleSet latest;
                    Log betweenLog;
                    Log latestLog;
                    EXPECT_EQ(document->GetDynamicSamples(path, start, end, &between), 0U);
                    EXPECT_EQ(document->GetDynamicSamplesClient(path, start, end, &betweenLog), 0U);
                    EXPECT_EQ(document->GetDynamicSample(path, end, &latest), 0U);
                    EXPECT_EQ(document->GetDynamicSampleClient(path, end, &latestLog), 0U);
                    EXPECT_EQ(LogOf(between), betweenLog);
                    EXPECT_EQ(LogOf(latest), latestLog);
                    EXPECT_EQ(latestLog.size(), 1U);
                }
            }
            const std::string begin = isUtc ? "1970-01-01T00:00:0" : "00:00:0";
            const std::string end = isUtc ? ".5Z|" : ":12|";
            const std::pair<const char*, Log> answers[] = {
                {"[0]", {begin + "3" + end + "3|", begin + "2" + end + "-2|"}},
                {"[1]", {begin + "3" + end + "3 0 |", begin + "2" + end + "-2 0 |"}},
                {"[2]", {begin + "3" + end + "ab|", begin + "2" + end + "a|"}}};
            for (const auto& [path, answer] : answers) {
                Log log;
                EXPECT_EQ(document->GetDynamicSamplesClient(path, {4, 1}, {2, 1}, &log), 0U);
                EXPECT_EQ(log, answer);
            }
        }
    }
}

TEST(Samples, FailedQueriesLeaveTheRecordEmptyAndHandNothingOver) {
    const TestFolder folder;
    Manager manager;
    const std::string text = Document(true, false, "\"+x\"");
    OpenDocument document(manager, folder.Write("a.vkjson", text));
    DynamicDataSampleSet samples;
    Log log;
    ASSERT_EQ(document->GetDynamicSamples("[0]", {0, 1}, {3, 1}, &samples), 0U);
    ASSERT_EQ(samples.samples.size(), 2U) << "the third is not looked at";
    TakeReports();
    EXPECT_EQ(document->GetDynamicSamples("[0]", {0, 1}, {9, 1}, &samples), 39U);
    EXPECT_TRUE(samples.samples.empty());
    EXPECT_EQ(document->GetDynamicSamplesClient("[0]", {9, 1}, {0, 1}, &log), 39U);
    EXPECT_EQ(document->GetDynamicSampleClient("[0]", {4, 1}, &log), 39U);
    EXPECT_TRUE(log.empty());
    const auto offset = static_cast<std::int64_t>(text.find(R"({"time":"00:00:03:12")"));
    const Report report = {&manager, 39, "Invalid sample value:\"sampleSetID:a/sample[2]\"", offset, -1};
    EXPECT_EQ(TakeReports(), std::vector<Report>(3, report));
    EXPECT_EQ(document->GetDynamicSample("[0]", {9, 1}, &samples), 0U);
    EXPECT_EQ(LogOf(samples), Log({"00:00:04:12|4|"}));
}

TEST(Samples, QueriesThatFindNothing) {
    const TestFolder folder;
    Manager manager;
    const std::string text = Document(true, true);
    OpenDocument document(manager, folder.Write("a.vkjson", text));
    TakeReports();
    const std::tuple<std::string, ZT_Time, ZT_Time, std::uint32_t, std::string> cases[] = {
        {"[0]", {0, 0}, {0, 1}, 1, "scale value cannot be zero for parameter startTime."},
        {"[9]", {0, 1}, {0, 0}, 1, "scale value cannot be zero for parameter endTime."},
        {"[\"a\"]", {-9, 1}, {1, 1}, 21, "Unable to fetch dynamic samples for SampleId:\"[\"a\"]\"."},
        {R"(["dataOutline"])",
         {0, 1},
         {1, 1},
         33,
         "\"Dynamic data node\" not found at input path, Found node type: \"Group data node\"."},
        {"[4]",
         {0, 1},
         {1, 1},
         36,
         "Invalid  dynamic node info in data outline for sample set:e.Calculated sample set "
         "size is out of file offset range."},
        {"[3]", {0, 1}, {1, 1}, 38, "No dynamic sample data present for sample id : d."}};
    for (const auto& [path, start, end, code, message] : cases) {
        DynamicDataSampleSet samples;
        samples.samples.resize(3);
        Log log;
        EXPECT_EQ(document->GetDynamicSamples(path.c_str(), start, end, &samples), code);
        EXPECT_EQ(document->GetDynamicSamplesClient(path.c_str(), start, end, &log), code);
        const auto set = static_cast<std::int64_t>(text.find("\"e\",\"samples\":[") + 15);
        const Report report = {&manager, code, message, code == 36 ? set : -1, -1};
        EXPECT_EQ(TakeReports(), std::vector<Report>(2, report)) << message;
        EXPECT_TRUE(samples.samples.empty() && log.empty()) << message;
        if (code == 1) continue;
        samples.samples.resize(3);
        EXPECT_EQ(document->GetDynamicSample(path.c_str(), start, &samples), code);
        EXPECT_EQ(document->GetDynamicSampleClient(path.c_str(), start, &log), code);
        EXPECT_EQ(TakeReports(), std::vector<Report>(2, report)) << message;
        EXPECT_TRUE(samples.samples.empty() && log.empty()) << message;
    }
    DynamicDataSampleSet samples;
    samples.samples.resize(3);
    EXPECT_EQ(document->GetDynamicSample("[0]", {1, 0}, &samples), 1U);
    EXPECT_TRUE(samples.samples.empty());
    EXPECT_EQ(OnlyReport(), "1 scale value cannot be zero for parameter time.");
}
