// What hosts are told of conversions, and how they choose among them.
#include <gtest/gtest.h>

#include "recording_host.h"
#include "test_folder.h"

namespace zentor_test {

namespace {

// Opens and closes; the notices, as TakeNotices has them, after the code if there is one.
std::string NoticesOf(Manager& manager, const std::string& path) {
    TakeNotices();
    ISensorFileHandler* handler = nullptr;
    const ZT_Result result = manager->OpenFile(&handler, path.c_str(), nullptr);
    if (handler != nullptr) manager->CloseFile(&handler);
    const std::string told = TakeNotices();
    return result == ZT_OK ? told : std::to_string(result) + " " + told;
}

std::string Opened(Manager& manager, const std::string& path) {
    ISensorFileHandler* handler = nullptr;
    EXPECT_EQ(manager->OpenFile(&handler, path.c_str(), nullptr), ZT_OK) << OnlyReport();
    if (handler == nullptr) return {};
    std::string creator;
    ZT_FileInfo info;
    EXPECT_EQ(handler->GetFileInfo(&info), ZT_OK);
    manager->CloseFile(&handler);
    return info.creator;
}

}  // namespace

TEST(Notices, TellKindCountAndTheFirstPlace) {
    const OptionsGuard guard;
    const TestFolder folder;
    Manager manager;
    const struct {
        const char* name;
        std::string text;
        const char* notices;   // kind x count @ offset : line
        const char* faithful;  // the same of a faithful conversion
    } cases[] = {
        {"a.csv", "a,b\n1,2\n3,4\n", "", ""},
        {"a.csv", "a,b\r\n1,2\r\n3,\r\n,5\r\n", "1x2@12:3", "1x2@12:3"},
        {"a.csv",
         "\xEF\xBB\xBF"
         "a,b\n1\n2,3,4\n2,3,,\n",
         "1x1@8:2 2x1@7:2 3x1@9:3", "1x1@8:2 2x1@7:2 3x1@9:3"},
        {"a.csv",
         std::string("\xFF\xFE"
                     "a\0,\0b\0\n\0"
                     "1\0,\0\n\0",
                     16),
         "1x1@-1:2", "1x1@-1:2"},
        {"a.csv", "a\n0.12345678901234567\n1e22\n1.5e22\n2.25e-7\n2.5e-10\n", "11x1@2:2 12x1@42:6", ""},
        {"a.csv", "a\nx\x01\ny\\z\nz\n", "13x2@2:2", ""},
        {"a.csv", "a\nx\xB0\n\xC3\xA9\n", "14x1@2:2", "15x1@2:2"},
        {"a.json", "[null,\n{\"a\": null, \"b\": 0.12345678901234567}]", "11x1@43:2 16x2@5:1", "16x2@5:1"},
        {"a.txt", "HIERARCHY\nROOT a\n", "9x1@0:1", "9x1@0:1"},
    };
    for (const auto& c : cases) {
        const std::string path = folder.Write(c.name, c.text);
        Options().faithful = 0;
        EXPECT_EQ(NoticesOf(manager, path), c.notices) << c.text;
        Options().faithful = 1;
        EXPECT_EQ(NoticesOf(manager, path), c.faithful) << c.text;
        std::filesystem::remove(PathOf(path));
    }
}

// Not with the failure of a conversion, and not again for a document that is open.
TEST(Notices, ComeOnceForAConversionThatSucceeds) {
    const TestFolder folder;
    Manager manager;
    EXPECT_EQ(NoticesOf(manager, folder.Write("a.json", "[null, 1")), "1506 ");
    const std::string path = folder.Write("a.csv", "a,b\n1,\n");
    ISensorFileHandler* handler = nullptr;
    ASSERT_EQ(manager->OpenFile(&handler, path.c_str(), nullptr), ZT_OK);
    EXPECT_EQ(TakeNotices(), "1x1@6:2");
    EXPECT_EQ(NoticesOf(manager, path), "");
    manager->CloseFile(&handler);
    IVkjsonStream* stream = nullptr;
    ASSERT_EQ(manager->ConvertFile(&stream, path.c_str(), 0), ZT_OK);
    EXPECT_EQ(TakeNotices(), "1x1@6:2");
    manager->ReleaseStream(&stream);
    TakeReports();
}

TEST(Options, OfOneFileOpenedInTwoWaysThereAreTwoDocuments) {
    const OptionsGuard guard;
    const TestFolder folder;
    Manager manager;
    const std::string path = folder.Write("a.csv", "a\n1.5e20\n");
    ISensorFileHandler* plain = nullptr;
    ISensorFileHandler* faithful = nullptr;
    ISensorFileHandler* again = nullptr;
    ASSERT_EQ(manager->OpenFile(&plain, path.c_str(), nullptr), ZT_OK);
    Options().faithful = 1;
    ASSERT_EQ(manager->OpenFile(&faithful, path.c_str(), nullptr), ZT_OK);
    ASSERT_EQ(manager->OpenFile(&again, path.c_str(), nullptr), ZT_OK);
    EXPECT_NE(plain, faithful);
    EXPECT_EQ(faithful, again);
    ZT_StaticDataInfo info;
    ASSERT_EQ(plain->GetStaticDataInfo("[0][0]", &info), ZT_OK);
    EXPECT_EQ(boost::get<double>(info.value), 150);
    ASSERT_EQ(faithful->GetStaticDataInfo("[0][0]", &info), ZT_OK);
    EXPECT_EQ(boost::get<double>(info.value), 1.5e20);
    for (ISensorFileHandler* handler : {plain, faithful, again}) EXPECT_EQ(manager->CloseFile(&handler), ZT_OK);
}

TEST(Options, AConverterTakesWhateverItIsGiven) {
    const OptionsGuard guard;
    const TestFolder folder;
    Manager manager;
    const std::string path = folder.Write("run.log", "a\tb\n1\t2\n");
    const std::string document = folder.Write("run.vkjson", "a\n1\n");
    for (const char* const name : {"tsv", "com.orvane.sensor.tsv"}) {
        Options().converter = name;
        EXPECT_EQ(Opened(manager, path), "com.orvane.sensor.tsv");
        EXPECT_EQ(Opened(manager, document), "com.orvane.sensor.tsv");
    }
    const char* const unknown[] = {"rate=5", nullptr};
    const char* const malformed[] = {"rate", nullptr};
    const struct {
        const char* converter;
        const char* const* parameters;
        const char* report;
    } cases[] = {
        {"", nullptr, "25 File Format Not Supported."},
        {"sv", nullptr, "1 "},
        {"sensor.tsv", nullptr, "1 "},
        {"tsv", unknown, "1506 The converter com.orvane.sensor.tsv has no parameter \"rate\"."},
        {"tsv", malformed, "1 "},
    };
    for (const auto& c : cases) {
        Options().converter = c.converter;
        Options().parameters = c.parameters;
        ISensorFileHandler* handler = nullptr;
        EXPECT_NE(manager->OpenFile(&handler, path.c_str(), (folder / "out.vkjson").c_str()), ZT_OK);
        EXPECT_EQ(handler, nullptr);
        EXPECT_TRUE(OnlyReport().starts_with(c.report)) << c.converter;
    }
    EXPECT_EQ(folder.FileCount(), 2U) << "something was left behind";
}

// What a host was compiled with may end anywhere: an option that it does not know is not set.
TEST(Options, OfAShortTableWhatIsMissingIsNotSet) {
    const OptionsGuard guard;
    const TestFolder folder;
    Manager manager;
    const std::string path = folder.Write("run.log", "a\tb\n1\t2\n");
    Options().converter = "tsv";
    Options().size = offsetof(ZT_HostOptions, converter);
    ISensorFileHandler* handler = nullptr;
    EXPECT_EQ(manager->OpenFile(&handler, path.c_str(), nullptr), ZT_FORMAT_NOT_SUPPORTED);
    TakeReports();
    Options().size += sizeof(const char*);
    EXPECT_EQ(Opened(manager, path), "com.orvane.sensor.tsv");
}

}  // namespace zentor_test
