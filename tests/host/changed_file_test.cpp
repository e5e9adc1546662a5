// Documents that others change while they are open, and what options do about what is wrong with samples.
#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <functional>
#include <random>
#include <thread>

#include "client_log.h"
#include "recording_host.h"
#include "test_folder.h"

namespace {

using namespace zentor_test;

constexpr std::size_t kSamples = 20000;

// A group of static texts and a set of samples, which are longer than what is read at once.
std::string Document(const std::string& fourth = "00:00:00:03", const std::string& value = "7") {
    std::string nodes;
    for (int i = 0; i < 2000; ++i) {
        const std::string number = std::to_string(i);
        nodes +=
            (i == 0 ? "" : ",") + (R"({"objectType":"dataStatic","matchName":"t)" + number) +
            R"(","displayName":"Text","dataType":{"type":"string","paddedStringProperties":{"eventMarkerB":false}},)" +
            R"("value":"text )" + number + "\"}";
    }
    std::string records;
    for (std::size_t i = 0; i < kSamples; ++i) {
        const auto two = [](std::size_t number) { return (number < 10 ? "0" : "") + std::to_string(number); };
        const std::string time = "00:" + two(i / 1500) + ":" + two(i / 25 % 60) + ":" + two(i % 25);
        records += (i == 0 ? "" : ",") + (R"({"time":")" + (i == 3 ? fourth : time)) + R"(","value":")" +
                   (i == 5 ? value : "7") + "\"}";
    }
    return R"({"version":"vkjson2.0.0","dynamicSamplesPresentB":true,"dynamicDataInfo":{"useTimecodeB":true,)"
           R"("timecodeInfo":{"frameRate":{"value":25,"scale":1},"dropFrame":false}},"dataDynamicSamples":)"
           R"([{"sampleSetID":"s","samples":[)" +
           records + R"(]}],"dataOutline":[{"objectType":"dataGroup","matchName":"g","displayName":"","children":[)" +
           nodes +
           R"(]},{"objectType":"dataDynamic","matchName":"d","displayName":"","sampleSetID":"s",)"
           R"("interpolation":"hold","hasExpectedFrequencyB":false,"sampleCount":)" +
           std::to_string(kSamples) +
           R"(,"dataType":{"type":"numberString","numberStringProperties":{"pattern":{"isSigned":false,)"
           R"("digitsInteger":1},"range":{"occurring":{"min":0,"max":9},"legal":{"min":0,"max":9}}}}}]})";
}

// Codes of all kinds of queries.
std::vector<ZT_Result> Query(ISensorFileHandler* document) {
    ZT_GroupChildren children;
    ZT_GroupChildInfo child;
    ZT_StaticDataInfo text;
    ZT_DynamicDataInfo dynamic;
    DynamicDataSampleSet samples;
    ZT_FileInfo file;
    ZT_VideoSyncTimeList videoSync;
    Log log;
    return {document->GetFileInfo(&file),
            document->GetVideoSyncTimeList(&videoSync),
            document->GetFileInfoClient(&log),
            document->GetVideoSyncTimeListClient(&log),
            document->GetRootChildren(&children),
            document->GetGroupChildren("[0]", &children),
            document->GetGroupChildInfo("[\"g\"]", &child),
            document->GetStaticDataInfo("[0][1999]", &text),
            document->GetStaticDataInfo("[\"g\"][\"t1000\"]", &text),
            document->GetDynamicDataInfo("[1]", &dynamic),
            document->GetDynamicSamples("[\"d\"]", {0, 1}, {800, 1}, &samples),
            document->GetDynamicSample("[1]", {400, 1}, &samples),
            document->GetGroupChildrenClient("[0]", &log),
            document->GetDynamicSamplesClient("[1]", {700, 1}, {0, 1}, &log)};
}

void Overwrite(const std::string& path, const std::string& content) {
    std::fstream file(PathOf(path), std::ios::binary | std::ios::in | std::ios::out);
    file.write(content.data(), static_cast<std::streamsize>(content.size()));
}

}  // namespace

TEST(ChangedFile, IsNoticedByEveryQuery) {
    const TestFolder folder;
    Manager manager;
    const std::string text = Document();
    const std::pair<const char*, std::function<void(const std::string&)>> changes[] = {
        {"one byte, time set back",
         [](const std::string& path) {
             const auto time = std::filesystem::last_write_time(PathOf(path));
             Overwrite(path, " ");
             std::filesystem::last_write_time(PathOf(path), time);
         }},
        {"longer", [](const std::string& path) { std::ofstream(PathOf(path), std::ios::app) << ' '; }},
#if !defined(_WIN32)  // where a file that is mapped cannot be cut
        {"shorter", [](const std::string& path) { std::filesystem::resize_file(PathOf(path), 100); }},
        {"empty", [](const std::string& path) { std::filesystem::resize_file(PathOf(path), 0); }},
#endif
    };
    for (const auto& [name, change] : changes) {
        const std::string path = folder.Write("a.vkjson", text);
        // Times of files do not tell changes that follow each other at once.
        std::this_thread::sleep_for(std::chrono::milliseconds(30));
        OpenDocument document(manager, path);
        EXPECT_EQ(Query(document.operator->()), std::vector<ZT_Result>(14, 0)) << name;
        TakeReports();
        std::this_thread::sleep_for(std::chrono::milliseconds(30));
        change(path);
        EXPECT_EQ(Query(document.operator->()), std::vector<ZT_Result>(14, 5)) << name;
        EXPECT_EQ(TakeReports().front().message, "Unable to stat input file, probably file is corrupt.");
    }
}

// Whoever writes while queries run: these end in an answer or an error.
TEST(ChangedFile, HarmsNoQueryThatRuns) {
    const TestFolder folder;
    Manager manager;
    const std::string text = Document();
    const std::string path = folder.Write("a.vkjson", text);
    std::mt19937 random(1);
    for (int round = 0; round < 20; ++round) {
        folder.Write("b.vkjson", text);
        OpenDocument document(manager, folder / "b.vkjson");
        std::thread writer([&] {
            std::string other = text;
            for (char& c : other) {
                if (random() % 50 == 0) c = "[]{}\",:0x"[random() % 9];
            }
            for (int k = 0; k < 3; ++k) {
                Overwrite(folder / "b.vkjson", k == 1 ? text : other);
#if !defined(_WIN32)
                std::filesystem::resize_file(PathOf(folder / "b.vkjson"), random() % text.size());
#endif
            }
        });
        for (int k = 0; k < 5; ++k) Query(document.operator->());
        writer.join();
        EXPECT_EQ(Query(document.operator->()), std::vector<ZT_Result>(14, 5));
    }
    TakeReports();
}

TEST(PrivateCopy, AnswersWhateverHappensToTheFile) {
    const TestFolder folder;
    const OptionsGuard guard;
    Options().privateCopy = 1;
    const std::size_t before = TemporaryFiles();
    const std::string path = folder.Write("a.vkjson", Document());
    {
        Manager manager;
        OpenDocument document(manager, path);
        std::ofstream(PathOf(path), std::ios::binary) << "nothing";
        EXPECT_EQ(Query(document.operator->()), std::vector<ZT_Result>(14, 0));
        ZT_StaticDataInfo info;
        EXPECT_EQ(document->GetStaticDataInfo("[0][1999]", &info), 0U);
        EXPECT_EQ(boost::get<std::string>(info.value), "text 1999");
    }
    EXPECT_EQ(TemporaryFiles(), before);
}

TEST(CheckSamples, FindsWhatIsWrongInsideASet) {
    const TestFolder folder;
    const OptionsGuard guard;
    Manager manager;
    const std::string place = "sampleSetID:s/sample[";
    const std::tuple<const char*, std::string, std::string, std::string> cases[] = {
        {"good", Document(), "", ""},
        {"equal times", Document("00:00:00:02"), "", ""},
        {"a time that goes back", Document("00:00:00:01"), "39 Invalid time value for :\"" + place + "3]\".",
         R"({"time":"00:00:00:01","value":"7"},{"time":"00:00:00:04")"},
        {"no time", Document("00:00:00:77"), "39 Invalid sample time:\"" + place + "3]\"", R"({"time":"00:00:00:77")"},
        {"no value", Document("00:00:00:03", "x"), "39 Invalid sample value:\"" + place + "5]\"",
         R"({"time":"00:00:00:05")"}};
    for (const auto& [name, text, failure, at] : cases) {
        const std::string path = folder.Write("a.vkjson", text);
        Options().checkSamples = 0;
        { OpenDocument document(manager, path); }
        TakeReports();
        Options().checkSamples = 1;
        ISensorFileHandler* handler = nullptr;
        IVkjsonStream* stream = nullptr;
        const ZT_Result code = failure.empty() ? 0 : 39;
        EXPECT_EQ(manager->OpenFile(&handler, path.c_str(), nullptr), code) << name;
        EXPECT_EQ(manager->ConvertFile(&stream, path.c_str(), 1), code) << name;
        const std::vector<Report> reports = TakeReports();
        if (failure.empty()) {
            manager->CloseFile(&handler);
            manager->ReleaseStream(&stream);
            continue;
        }
        ASSERT_EQ(reports.size(), 2U) << name;
        EXPECT_EQ(std::to_string(reports[0].code) + " " + reports[0].message, failure);
        EXPECT_EQ(reports[0].extra1, static_cast<std::int64_t>(text.rfind(at))) << name;
        EXPECT_EQ(reports[1].message, reports[0].message);
        EXPECT_EQ(manager->ConvertFile(&stream, path.c_str(), 0), 0U) << name;
        manager->ReleaseStream(&stream);
    }
}
