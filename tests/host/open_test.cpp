// Documents opened, queried and closed, as a host does it.
#include <gtest/gtest.h>

#include <set>

#include "client_log.h"
#include "recording_host.h"
#include "test_folder.h"

namespace {

using namespace zentor_test;

const std::string kTable = "n,t\n1,x\n-2.5,y\n";

constexpr const char* kDocument =
    R"({"version":"vkjson2.0.0","dynamicSamplesPresentB":true,"dynamicDataInfo":{"useTimecodeB":true,"timecodeInfo":)"
    R"({"frameRate":{"value":30000,"scale":1001},"dropFrame":true},"videoSyncTimeList":[{"fileName":"a.mov",)"
    R"("frameNumber":7},{"fileName":"b.mov","timeString":"00:00:01;00"}]},"dataDynamicSamples":[{"sampleSetID":"s",)"
    R"("samples":[{"time":"00:00:00;00","value":{"length":"1","str":"[]"}}]},{"sampleSetID":"r","samples":[]}],)"
    R"("creator":"test","dataOutline":[{"objectType":"dataGroup","matchName":"g","displayName":"G\u00e9","children":[)"
    R"({"objectType":"dataStatic","matchName":"n","displayName":"","dataType":{"type":"number",)"
    R"("numberStringProperties":{"pattern":{"isSigned":true,"digitsDecimal":1,"digitsInteger":2},"range":)"
    R"({"occurring":{"min":-10.5,"max":1},"legal":{"min":-20,"max":20}}}},"value":-10.5},)"
    R"({"objectType":"dataStatic","matchName":"t","displayName":"T","dataType":{"type":"string",)"
    R"("paddedStringProperties":{"maxLen":9,"eventMarkerB":true}},"value":"a\tb"},)"
    R"({"objectType":"dataStatic","matchName":"b","displayName":"B","dataType":{"type":"boolean"},"value":true},)"
    R"({"objectType":"dataStatic","matchName":"a","displayName":"A","dataType":{"type":"numberArray",)"
    R"("numberArrayProperties":{"pattern":{"isSigned":false},"arrayRanges":{"ranges":[{"occurring":{"min":1,"max":2},)"
    R"("legal":{"min":0,"max":3}},{"occurring":{"min":4,"max":5},"legal":{"min":3,"max":6}}]},"arraySize":2,)"
    R"("arrayDisplayNames":["x","y"],"isPoint":true}},"value":[1.25,5]}]},)"
    R"({"objectType":"dataDynamic","matchName":"d","displayName":"D","sampleSetID":"s","interpolation":"hold",)"
    R"("hasExpectedFrequencyB":true,"sampleCount":1,"expectedMaxInterSampleDuration":"00:00:00;01","dataType":)"
    R"({"type":"paddedString","paddedStringProperties":{"maxDigitsInStrLength":1,"maxLen":2,"eventMarkerB":false}}},)"
    R"({"objectType":"dataDynamic","matchName":"e","displayName":"E","sampleSetID":"r","interpolation":"linear",)"
    R"("hasExpectedFrequencyB":false,"sampleCount":0,"dataType":{"type":"numberString","numberStringProperties":)"
    R"({"pattern":{"isSigned":false,"digitsInteger":3},"range":{"occurring":{"min":0,"max":0},)"
    R"("legal":{"min":0,"max":0}}}}}]})";

// The paths of all nodes, as strings.
void CollectPaths(OpenDocument& document, const std::string& parent, std::vector<std::string>& paths) {
    ZT_GroupChildren children;
    ASSERT_EQ(document->GetGroupChildren(parent.c_str(), &children), 0U);
    for (const ZT_DataPath& child : children.paths) {
        const std::string path = child.ToString();
        paths.push_back(path);
        ZT_GroupChildInfo info;
        ASSERT_EQ(document->GetGroupChildInfo(path.c_str(), &info), 0U);
        EXPECT_EQ(info.matchName, child.items.back().matchName);
        if (info.nodeType == ZT_NODE_GROUP) CollectPaths(document, path, paths);
    }
}

template <class Record>
void ExpectSame(const Record& record, const Log& client) {
    EXPECT_EQ(LogOf(record), client);
    EXPECT_FALSE(client.empty());
}

}  // namespace

TEST(Open, ClientFormsTellWhatTheRecordsHold) {
    const TestFolder folder;
    Manager manager;
    OpenDocument document(manager, folder.Write("a.vkjson", kDocument));
    ZT_FileInfo file;
    ZT_VideoSyncTimeList sync;
    ZT_GroupChildren children;
    Log fileLog;
    Log syncLog;
    Log childrenLog;
    EXPECT_EQ(document->GetFileInfo(&file) + document->GetFileInfoClient(&fileLog), 0U);
    EXPECT_EQ(fileLog, Log({"file|30000|1001|vkjson2.0.0|test|", "time|2|29.970029970029969|1|0|0|"}));
    ExpectSame(file, fileLog);
    EXPECT_EQ(document->GetVideoSyncTimeList(&sync) + document->GetVideoSyncTimeListClient(&syncLog), 0U);
    EXPECT_EQ(syncLog, Log({"frame|a.mov|7|", "moment|b.mov|00:00:01;00|"}));
    ExpectSame(sync, syncLog);
    EXPECT_EQ(document->GetRootChildren(&children) + document->GetRootChildrenClient(&childrenLog), 0U);
    EXPECT_EQ(childrenLog, Log({"dataOutline|-1|3|0|", "g|0|3|1|", "dataOutline|-1|3|0|", "d|1|3|1|",
                                "dataOutline|-1|3|0|", "e|2|3|1|"}));
    ExpectSame(children, childrenLog);

    std::vector<std::string> paths;
    CollectPaths(document, "[\"dataOutline\"]", paths);
    ASSERT_EQ(paths.size(), 7U);
    Log all;
    for (const std::string& path : paths) {
        ZT_GroupChildInfo info;
        Log log;
        EXPECT_EQ(document->GetGroupChildInfo(path.c_str(), &info), 0U);
        EXPECT_EQ(document->GetGroupChildInfoClient(path.c_str(), &log), 0U);
        ExpectSame(info, log);
        log.clear();
        if (info.nodeType == ZT_NODE_STATIC) {
            ZT_StaticDataInfo node;
            EXPECT_EQ(document->GetStaticDataInfo(path.c_str(), &node), 0U);
            EXPECT_EQ(document->GetStaticDataInfoClient(path.c_str(), &log), 0U);
            ExpectSame(node, log);
        } else if (info.nodeType == ZT_NODE_DYNAMIC) {
            ZT_DynamicDataInfo node;
            EXPECT_EQ(document->GetDynamicDataInfo(path.c_str(), &node), 0U);
            EXPECT_EQ(document->GetDynamicDataInfoClient(path.c_str(), &log), 0U);
            ExpectSame(node, log);
        } else {
            EXPECT_EQ(document->GetGroupChildren(path.c_str(), &children), 0U);
            EXPECT_EQ(document->GetGroupChildrenClient(path.c_str(), &log), 0U);
            ExpectSame(children, log);
            continue;
        }
        all.insert(all.end(), log.begin(), log.end());
    }
    EXPECT_EQ(all, Log({"names||n|",
                        "type|number|",
                        "pattern|1|2|1|",
                        "range|0|-10.5|1|-20|20|",
                        "number|-10.5|",
                        "names|T|t|",
                        "type|string|",
                        "padded|9|-1|1|",
                        "string|a\tb|",
                        "names|B|b|",
                        "type|boolean|",
                        "boolean|1|",
                        "names|A|a|",
                        "type|numberArray|",
                        "pattern|0|-1|-1|",
                        "range|0|1|2|0|3|",
                        "range|1|4|5|3|6|",
                        "elements|2|1|",
                        "dimension|0|x|",
                        "dimension|1|y|",
                        "array|1.25 5 |",
                        "names|D|d|",
                        "samples|s|2|1|1|00:00:00;01|",
                        "type|paddedString|",
                        "padded|2|1|0|",
                        "span|00:00:00;00|00:00:00;00|",
                        "names|E|e|",
                        "samples|r|1|0|0||",
                        "type|numberString|",
                        "pattern|0|3|-1|",
                        "range|0|0|0|0|0|"}));
}

TEST(Open, FailedQueriesLeaveTheRecordEmptyAndTheHandlerUsable) {
    const TestFolder folder;
    Manager manager;
    OpenDocument document(manager, folder.Write("a.vkjson", kDocument));
    TakeReports();
    ZT_StaticDataInfo info;
    ASSERT_EQ(document->GetStaticDataInfo("[0][0]", &info), 0U);
    EXPECT_EQ(document->GetStaticDataInfo("[1]", &info), 33U);
    EXPECT_EQ(OnlyReport(), "33 \"Static data node\" not found at input path, Found node type: \"Dynamic data node\".");
    EXPECT_EQ(info.matchName + info.dataType.type, "");
    ZT_GroupChildren children;
    ASSERT_EQ(document->GetRootChildren(&children), 0U);
    EXPECT_EQ(document->GetGroupChildren("[0][0]", &children), 33U);
    EXPECT_TRUE(children.paths.empty());
    TakeReports();
    Log log;
    const struct {
        ZT_Result result;
        std::string report;
    } cases[] = {
        {document->GetStaticDataInfo("[0]", nullptr), "1 Invalid pointer to \"ZT_StaticDataInfo\"."},
        {document->GetDynamicDataInfo("[0]", nullptr), "1 Invalid pointer to \"ZT_DynamicDataInfo\"."},
        {document->GetGroupChildInfo("[0]", nullptr), "1 Invalid pointer to \"ZT_GroupChildInfo\"."},
        {document->GetRootChildren(nullptr), "1 Invalid pointer to \"ZT_GroupChildren\"."},
        {document->GetFileInfo(nullptr), "1 Invalid pointer to \"ZT_FileInfo\"."},
        {document->GetVideoSyncTimeList(nullptr), "1 Invalid pointer to \"ZT_VideoSyncTimeList\"."},
        {document->GetDynamicSample("[1]", {0, 1}, nullptr), "1 Invalid pointer to \"DynamicDataSampleSet\"."},
        {document->GetStaticDataInfoClient("", &log), "1 Empty ZT_DataPath string."},
        {document->GetStaticDataInfoClient(nullptr, &log), "1 Invalid pointer to \"ZT_DataPath\"."},
        {document->GetDynamicSamplesClient("[1]", {0, 0}, {0, 1}, &log),
         "1 scale value cannot be zero for parameter startTime."},
        {document->GetDynamicSamplesClient("[1]", {0, 1}, {0, 0}, &log),
         "1 scale value cannot be zero for parameter endTime."},
        {document->GetDynamicSampleClient("[1]", {0, 0}, &log), "1 scale value cannot be zero for parameter time."},
    };
    const std::vector<Report> reports = TakeReports();
    ASSERT_EQ(reports.size(), std::size(cases));
    for (std::size_t i = 0; i < std::size(cases); ++i) {
        EXPECT_EQ(cases[i].result, 1U);
        EXPECT_EQ(std::to_string(reports[i].code) + " " + reports[i].message, cases[i].report);
    }
    EXPECT_TRUE(log.empty());
    EXPECT_EQ(document->GetStaticDataInfo("[0][0]", &info), 0U);
}

TEST(Open, UsesAreCounted) {
    const TestFolder folder;
    const std::size_t temporary = TemporaryFiles();
    const std::string table = folder.Write("a.csv", kTable);
    const std::string text = folder.Write("b.vkjson", kDocument);
    Manager manager;
    ISensorFileHandler* first = nullptr;
    ISensorFileHandler* again = nullptr;
    ISensorFileHandler* other = nullptr;
    ASSERT_EQ(manager->OpenFile(&first, table.c_str(), nullptr), 0U);
    ASSERT_EQ(manager->OpenFile(&again, table.c_str(), ""), 0U);
    ASSERT_EQ(manager->OpenFile(&other, text.c_str(), nullptr), 0U);
    EXPECT_EQ(first, again);
    EXPECT_NE(first, other);
    EXPECT_EQ(manager->CloseFile(&again), 0U);
    EXPECT_EQ(again, first) << "still in use";
    ZT_FileInfo info;
    EXPECT_EQ(first->GetFileInfo(&info), 0U);
    EXPECT_EQ(manager->CloseFile(&first), 0U);
    EXPECT_EQ(first, nullptr);
    EXPECT_EQ(manager->CloseFile(&again), 27U) << "gone, and never followed";
    EXPECT_EQ(manager->CloseFile(&other), 0U);
    EXPECT_EQ(manager->CloseFile(&again), 26U);
    TakeReports();
    EXPECT_EQ(TemporaryFiles(), temporary);
    {
        // What is left open goes with the manager.
        Manager second;
        ASSERT_EQ(second->OpenFile(&first, table.c_str(), nullptr), 0U);
        ASSERT_EQ(second->OpenFile(&other, text.c_str(), nullptr), 0U);
    }
    // The first manager object still holds the process's manager.
    EXPECT_EQ(manager->CloseFile(&first), 0U);
    EXPECT_EQ(manager->CloseFile(&other), 0U);
    EXPECT_EQ(TemporaryFiles(), temporary);
}

TEST(Open, AFileIsOneWhateverItsPath) {
    const TestFolder folder;
    const std::string table = folder.Write("a.csv", kTable);
    std::filesystem::create_directory(PathOf(folder / "sub"));
    std::filesystem::create_hard_link(PathOf(table), PathOf(folder / "link.csv"));
    std::filesystem::create_hard_link(PathOf(table), PathOf(folder / "link.tsv"));
    std::vector<std::string> spellings = {folder.Path() + "/./a.csv", folder.Path() + "//sub/..//a.csv",
                                          folder / "link.csv", Utf8Of(std::filesystem::relative(PathOf(table)))};
#if defined(_WIN32)
    spellings.push_back(folder / "A.CSV");
#else
    std::filesystem::create_symlink("../a.csv", PathOf(folder / "sub/symbolic.csv"));
    spellings.push_back(folder / "sub/symbolic.csv");
#endif
    Manager manager;
    OpenDocument first(manager, table);
    for (const std::string& spelling : spellings) {
        OpenDocument again(manager, spelling);
        EXPECT_EQ(again.operator->(), first.operator->()) << spelling;
    }
    // The same bytes make another document under another extension, and another file is another one.
    for (const std::string& path : {folder / "link.tsv", folder.Write("b.csv", kTable)}) {
        OpenDocument other(manager, path);
        EXPECT_NE(other.operator->(), first.operator->()) << path;
    }
    // What takes the file's place is not open yet; what was open can still be had where it is now.
    std::filesystem::rename(PathOf(folder / "b.csv"), PathOf(table));
    OpenDocument instead(manager, table);
    EXPECT_NE(instead.operator->(), first.operator->());
    OpenDocument instead2(manager, table);
    EXPECT_EQ(instead2.operator->(), instead.operator->());
#if !defined(_WIN32)  // whose numbers are not used again; Wine's are, and do not come with an age
    std::filesystem::remove(PathOf(table));
    OpenDocument made(manager, folder.Write("a.csv", "n\n3\n"));
    ZT_StaticDataInfo info;
    ASSERT_EQ(made->GetStaticDataInfo("[0][0]", &info), 0U);
    EXPECT_EQ(boost::get<double>(info.value), 3) << "of a file that is gone, and may have had the same number";
#endif
}

TEST(Open, OutputPaths) {
    const TestFolder folder;
    const std::size_t temporary = TemporaryFiles();
    const std::string table = folder.Write("in.csv", kTable);
    const std::string text = folder.Write("in.vkjson", kDocument);
    const std::string old = folder.Write("old.vkjson", "before");
    Manager manager;
    TakeReports();
    ISensorFileHandler* handler = nullptr;
    const auto open = [&](const std::string& input, const std::string& output) {
        return manager->OpenFile(&handler, input.c_str(), output.c_str());
    };
    // A converted document is renamed to a new output and exchanged with one that is there.
    for (const std::string& output : {folder / "new.vkjson", old}) {
        ASSERT_EQ(open(table, output), 0U);
        ZT_StaticDataInfo info;
        EXPECT_EQ(handler->GetStaticDataInfo("[0][1]", &info), 0U);
        EXPECT_EQ(boost::get<double>(info.value), -2.5);
        EXPECT_EQ(ReadWhole(output).substr(0, 24), R"({"version":"vkjson2.0.0")");
        // Again for the place where it stands: nothing to do. To another place: the input's own bytes.
        EXPECT_EQ(open(table, output), 0U);
        EXPECT_EQ(open(table, folder / "copy"), 0U);
        EXPECT_EQ(ReadWhole(folder / "copy"), kTable);
        EXPECT_EQ(open(table, table), 7U) << "onto the recording itself";
        EXPECT_EQ(ReadWhole(table), kTable);
        ASSERT_EQ(open(table, ""), 0U);
        for (int i = 0; i < 4; ++i) EXPECT_EQ(manager->CloseFile(&handler), 0U);
        EXPECT_EQ(handler, nullptr);
        EXPECT_EQ(ReadWhole(output).substr(0, 24), R"({"version":"vkjson2.0.0")");
    }
    // A document is copied; a longer output is cut.
    folder.Write("old.vkjson", std::string(10000, 'x'));
    for (const std::string& output : {folder / "new2.vkjson", old}) {
        ASSERT_EQ(open(text, output), 0U);
        EXPECT_EQ(ReadWhole(output), kDocument);
        EXPECT_EQ(manager->CloseFile(&handler), 0U);
    }
    ASSERT_EQ(open(text, text), 0U) << "onto itself";
    // An open document's file is never written to.
    ISensorFileHandler* const opened = handler;
    EXPECT_EQ(open(table, text), 7U);
    EXPECT_EQ(handler, nullptr);
    IVkjsonStream* stream = nullptr;
    ASSERT_EQ(manager->ConvertFile(&stream, table.c_str(), 0), 0U);
    EXPECT_EQ(stream->SaveTo(text.c_str()), 7U);
    manager->ReleaseStream(&stream);
    handler = opened;
    EXPECT_EQ(manager->CloseFile(&handler), 0U);
    EXPECT_EQ(ReadWhole(text), kDocument);

    EXPECT_EQ(open(table, table), 7U);
    EXPECT_EQ(open(table, folder / "no/out.vkjson"), 58U);
    EXPECT_EQ(open(text, folder / "no/out.vkjson"), 58U);
    EXPECT_EQ(open(table, folder.Path()), 4U);
    EXPECT_EQ(open(text, folder.Path()), 4U);
    EXPECT_EQ(open(table, std::string(65535, 'a')), 3U);
    for (const std::size_t length : {32800u, 65534u}) {  // longer than the system takes, whatever 16 bits can count
        EXPECT_NE(open(table, std::string(length, 'a')), 0U);
        EXPECT_NE(open(text, folder / std::string(length, 'a')), 0U);
    }
    EXPECT_EQ(ReadWhole(table), kTable);
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(PathOf(folder.Path()))) {
        names.insert(Utf8Of(entry.path().filename()));
    }
    EXPECT_EQ(names, std::set<std::string>({"in.csv", "in.vkjson", "old.vkjson", "new.vkjson", "new2.vkjson", "copy"}));
    EXPECT_EQ(TemporaryFiles(), temporary);
    TakeReports();
}

#if !defined(_WIN32)
TEST(Open, AnOutputStaysWhatItIs) {
    const TestFolder folder;
    const std::string table = folder.Write("in.csv", kTable);
    const auto old = PathOf(folder.Write("old.vkjson", "before"));
    const auto link = PathOf(folder / "link.vkjson");
    const auto mode = std::filesystem::perms::owner_read | std::filesystem::perms::owner_write;
    std::filesystem::permissions(old, mode);
    std::filesystem::create_symlink(old, link);
    Manager manager;
    ISensorFileHandler* handler = nullptr;
    ASSERT_EQ(manager->OpenFile(&handler, table.c_str(), Utf8Of(link).c_str()), 0U);
    EXPECT_TRUE(std::filesystem::is_symlink(link));
    EXPECT_EQ(std::filesystem::status(old).permissions(), mode);
    EXPECT_EQ(ReadWhole(folder / "old.vkjson").substr(0, 10), R"({"version")");
    EXPECT_EQ(manager->CloseFile(&handler), 0U);
}
#endif

TEST(Open, TheNameAndTheFirstPropertyChooseTheVersion) {
    const TestFolder folder;
    Manager manager;
    const std::string version2 = R"({"version":"vkjson2.0.0","dynamicSamplesPresentB":false,"dataOutline":[]})";
    const std::string version1 =
        R"({"useTimecodeB":false,"utcInfo":{"precisionLength":0,"isGMT":true},"dataOutline":[]})";
    const std::string turned = R"({"dynamicSamplesPresentB":false,"version":"vkjson2.0.0","dataOutline":[]})";
    const struct {
        std::string name;
        std::string content;
        ZT_Result result;
    } cases[] = {
        {"a.vkjson", version2, 0},  {"b.vkjson", version1, 0},   {"c.vkjson", turned, 30}, {"d.json", version2, 0},
        {"e.unknown", version2, 0}, {"f.unknown", version1, 25}, {"g.vkjson", "", 54},     {"h.vkjson", "\n {", 32},
    };
    for (const auto& c : cases) {
        ISensorFileHandler* handler = nullptr;
        EXPECT_EQ(manager->OpenFile(&handler, folder.Write(c.name, c.content).c_str(), nullptr), c.result) << c.name;
        EXPECT_EQ(handler != nullptr, c.result == 0);
        if (handler != nullptr) manager->CloseFile(&handler);
    }
    TakeReports();
}
