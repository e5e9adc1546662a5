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

}  // namespace zentor_test
