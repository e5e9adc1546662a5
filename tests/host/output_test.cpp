// Documents that OpenFile keeps at an output path: how they get there, and who may read them.
#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "recording_host.h"
#include "test_folder.h"

namespace zentor_test {

namespace {

using std::filesystem::perms;

perms PermissionsOf(const std::string& path) { return std::filesystem::status(PathOf(path)).permissions(); }

// Keeps the document of `input` at `output`.
void Keep(Manager& manager, const std::string& input, const std::string& output) {
    ISensorFileHandler* handler = nullptr;
    ASSERT_EQ(manager->OpenFile(&handler, input.c_str(), output.c_str()), 0U) << OnlyReport();
    ASSERT_EQ(manager->CloseFile(&handler), 0U);
}

}  // namespace

TEST(Output, IsThereWhileItIsReplaced) {
    const TestFolder folder;
    Manager manager;
    const std::string input = folder.Write("in.csv", "a\n1\n");
    const std::string output = folder.Write("out.vkjson", "before");
    std::atomic<bool> isDone{false};
    int looks = 0;
    int missing = 0;
    std::thread other([&] {
        for (; !isDone; ++looks) missing += std::filesystem::exists(PathOf(output)) ? 0 : 1;
    });
    for (int round = 0; round < 300; ++round) Keep(manager, input, output);
    isDone = true;
    other.join();
    EXPECT_GT(looks, 300);
    EXPECT_EQ(missing, 0) << "of " << looks;
}

TEST(Output, CanBeReadByThoseWhoCouldBefore) {
    const TestFolder folder;
    Manager manager;
    const std::string table = folder.Write("in.csv", "a\n1\n");
    const std::string document = folder / "in.vkjson";
    Keep(manager, table, document);
    const perms usual = PermissionsOf(folder.Write("usual", ""));
    EXPECT_EQ(PermissionsOf(document), usual) << "a new file is like any other";
    for (const std::string& input : {table, document}) {
        for (const perms permissions :
             {perms::owner_read | perms::owner_write, perms::owner_read | perms::owner_write | perms::group_read}) {
            const std::string output = folder.Write("out.vkjson", "before");
            std::filesystem::permissions(PathOf(output), permissions);
            Keep(manager, input, output);
            EXPECT_EQ(PermissionsOf(output), permissions) << input;
        }
        const std::string fresh = folder / "fresh.vkjson";
        Keep(manager, input, fresh);
        EXPECT_EQ(PermissionsOf(fresh), usual) << input;
        std::filesystem::remove(PathOf(fresh));
    }
    // Without an output the document is nobody else's.
    IVkjsonStream* stream = nullptr;
    ASSERT_EQ(manager->ConvertFile(&stream, table.c_str(), 0), 0U);
    EXPECT_EQ(PermissionsOf(stream->DocumentPath()), perms::owner_read | perms::owner_write);
    EXPECT_EQ(manager->ReleaseStream(&stream), 0U);
}

TEST(Output, OfALinkIsWhatItLeadsTo) {
    const TestFolder folder;
    Manager manager;
    const std::string input = folder.Write("in.csv", "a\n1\n");
    const std::string target = folder.Write("target.vkjson", "before");
    const std::string link = folder / "link.vkjson";
    std::filesystem::create_symlink("target.vkjson", PathOf(link));
    Keep(manager, input, link);
    EXPECT_TRUE(std::filesystem::is_symlink(PathOf(link)));
    EXPECT_TRUE(ReadWhole(target).starts_with("{\"version\"")) << ReadWhole(target);
    EXPECT_EQ(folder.FileCount(), 3U);
}

TEST(Output, StrictRefusesTextsThatWouldComeBackAsOthers) {
    const TestFolder folder;
    const OptionsGuard guard;
    Manager manager;
    const std::string output = folder.Write("out.vkjson", "before");
    const std::string backslash = "1506 A text has a backslash, which the format cannot hold as it is.";
    const std::string control = "1506 A text has a control character, which the format cannot hold as it is.";
    const std::string cases[][3] = {
        {"in.csv", "a\nC:\\data\n", backslash},
        {"in.json", "{\"a\":\"C:\\\\temp\"}", backslash},
        {"in.json", "{\"a\":\"one\\ntwo\"}", control},
        {"in.csv", "a\nb\x01\n", control},
    };
    for (const auto& [name, text, message] : cases) {
        const std::string input = folder.Write(name, text);
        ISensorFileHandler* handler = nullptr;
        IVkjsonStream* stream = nullptr;
        Options().strict = 1;
        EXPECT_EQ(manager->OpenFile(&handler, input.c_str(), output.c_str()), ZT_CONVERSION);
        EXPECT_TRUE(OnlyReport().starts_with(message)) << text;
        EXPECT_EQ(manager->ConvertFile(&stream, input.c_str(), 0), ZT_CONVERSION);
        EXPECT_TRUE(OnlyReport().starts_with(message)) << text;
        EXPECT_EQ(ReadWhole(output), "before");
        Options().strict = 0;
        EXPECT_EQ(manager->ConvertFile(&stream, input.c_str(), 0), ZT_OK);
        EXPECT_EQ(manager->ReleaseStream(&stream), ZT_OK);
        std::filesystem::remove(PathOf(input));
        EXPECT_EQ(folder.FileCount(), 1U) << "something was left behind";
    }
    // Quotes of JSON are escapes in the document that the input itself is.
    Options().strict = 1;
    Keep(manager, folder.Write("in.csv", "a/b,c\xC3\xA9\n1,2\n"), output);
    Keep(manager, output, folder / "copy.vkjson");
}

TEST(Output, IsPlacedUnreadWhenNobodyAsksForMore) {
    const TestFolder folder;
    const OptionsGuard guard;
    Manager manager;
    const std::string good = folder.Write("good.csv", "a\n1\n");
    const std::string read = folder / "read.vkjson";
    Keep(manager, good, read);
    Options().unread = 1;
    ISensorFileHandler* handler = nullptr;
    for (const std::string& input : {good, read}) {
        const std::string unread = folder.Write("unread.vkjson", "before");
        ASSERT_EQ(manager->OpenFile(&handler, input.c_str(), unread.c_str()), ZT_OK) << OnlyReport();
        EXPECT_EQ(handler, nullptr);
        EXPECT_EQ(ReadWhole(unread), ReadWhole(read));
    }
    // No reader would take it.
    const std::string quote = folder.Write("quote.csv", "a\n\"x\n");
    const std::string output = folder / "quote.vkjson";
    EXPECT_EQ(manager->OpenFile(&handler, quote.c_str(), output.c_str()), ZT_OK);
    EXPECT_EQ(handler, nullptr);
    EXPECT_NE(ReadWhole(output).find("\"\"x\""), std::string::npos);
    EXPECT_EQ(manager->OpenFile(&handler, good.c_str(), good.c_str()), ZT_FILE_CREATE);
    EXPECT_EQ(manager->OpenFile(&handler, read.c_str(), read.c_str()), ZT_OK) << "nothing to do";
    EXPECT_EQ(folder.FileCount(), 5U);
    // Without an output there is nothing to place: the document is opened.
    ASSERT_EQ(manager->OpenFile(&handler, good.c_str(), nullptr), ZT_OK);
    ASSERT_NE(handler, nullptr);
    EXPECT_EQ(manager->CloseFile(&handler), ZT_OK);
    TakeReports();
}

TEST(Output, LeavesAFileThatIsThereWhenItIsToBeNew) {
    const TestFolder folder;
    const OptionsGuard guard;
    Manager manager;
    const std::string table = folder.Write("in.csv", "a\n1\n");
    const std::string output = folder / "out.vkjson";
    Options().newOutput = 1;
    Keep(manager, table, output);
    const std::string there = folder.Write("there.vkjson", "before");
    for (const std::uint8_t unread : {std::uint8_t{0}, std::uint8_t{1}}) {
        Options().unread = unread;
        for (const std::string& input : {table, output}) {
            ISensorFileHandler* handler = nullptr;
            EXPECT_EQ(manager->OpenFile(&handler, input.c_str(), there.c_str()), ZT_FILE_CREATE) << input;
            EXPECT_EQ(ReadWhole(there), "before");
        }
    }
    EXPECT_EQ(folder.FileCount(), 3U);
    TakeReports();
}

}  // namespace zentor_test
