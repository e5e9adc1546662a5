// Streams, and inputs that cannot be converted.
#include <gtest/gtest.h>

#include <thread>

#include "recording_host.h"
#include "test_folder.h"

namespace zentor_test {

namespace {

constexpr const char* kTable = "a,b\n1,x\n2,y\n";

class StreamTest : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(manager_->ConvertFile(&stream_, folder_.Write("in.csv", kTable).c_str(), 0), 0U);
        document_ = ReadWhole(stream_->DocumentPath());
        TakeReports();
    }
    void TearDown() override {
        if (stream_ != nullptr) manager_->ReleaseStream(&stream_);
    }

    TestFolder folder_;
    Manager manager_;
    IVkjsonStream* stream_ = nullptr;
    std::string document_;
};

}  // namespace

TEST_F(StreamTest, ReadsInPieces) {
    ASSERT_EQ(stream_->Size(), document_.size());
    std::string read;
    std::string piece(100, '?');
    const std::uint32_t count = 100;
    while (const std::uint32_t got = stream_->Read(piece.data(), &count)) {
        read += piece.substr(0, got);
        EXPECT_EQ(stream_->Remaining(), document_.size() - read.size());
        EXPECT_EQ(piece.substr(got), std::string(count - got, '\0'));  // zero-filled past what was read
        piece.assign(100, '?');
    }
    EXPECT_EQ(read, document_);
    EXPECT_EQ(piece, std::string(100, '\0'));
    // After a full read, a rewind gives nothing more.
    EXPECT_EQ(stream_->Rewind(), 0U);
    EXPECT_EQ(stream_->Remaining(), 0U);
    EXPECT_EQ(stream_->Read(piece.data(), &count), 0U);
}

TEST_F(StreamTest, RewindKeepsTheRemainingCount) {
    std::string piece(10, '?');
    const std::uint32_t ten = 10;
    ASSERT_EQ(stream_->Read(piece.data(), &ten), 10U);
    ASSERT_EQ(stream_->Rewind(), 0U);
    std::string rest(document_.size(), '?');
    const auto all = static_cast<std::uint32_t>(rest.size());
    EXPECT_EQ(stream_->Read(rest.data(), &all), all - 10);
    EXPECT_EQ(rest.substr(0, all - 10), document_.substr(0, all - 10));
}

TEST_F(StreamTest, RefusesNullPointers) {
    const std::uint32_t count = 1;
    char byte = 0;
    EXPECT_EQ(stream_->Read(nullptr, &count), 0U);
    EXPECT_EQ(OnlyReport(), "1 Invalid pointer to \"GetVKJSONStream\".");
    EXPECT_EQ(stream_->Read(&byte, nullptr), 0U);
    EXPECT_EQ(OnlyReport(), "1 Invalid pointer to \"GetVKJSONStream\".");
    EXPECT_EQ(stream_->SaveTo(nullptr), 2U);
    EXPECT_EQ(stream_->SaveTo(""), 2U);
    EXPECT_EQ(stream_->SaveTo(std::string(65535, 'x').c_str()), 3U);
    EXPECT_EQ(stream_->Remaining(), document_.size());
    TakeReports();
}

TEST_F(StreamTest, SavesTheWholeDocument) {
    std::string piece(10, '?');
    const std::uint32_t ten = 10;
    stream_->Read(piece.data(), &ten);
    const std::string longer = folder_.Write("longer.vkjson", std::string(10000, 'x'));
    const std::string targets[] = {folder_ / "new.vkjson", longer, folder_ / "\xC3\xA9t\xC3\xA9 \xE6\xB8\xA9.vkjson"};
    for (const std::string& target : targets) {
        EXPECT_EQ(stream_->SaveTo(target.c_str()), 0U);
        EXPECT_EQ(ReadWhole(target), document_) << target;
    }
    EXPECT_EQ(stream_->Remaining(), document_.size() - 10);  // saving does not move the reading
    // Onto itself: nothing happens.
    EXPECT_EQ(stream_->SaveTo(stream_->DocumentPath()), 0U);
    EXPECT_EQ(ReadWhole(stream_->DocumentPath()), document_);
    EXPECT_TRUE(Reports().empty());
}

TEST_F(StreamTest, SavingFailsCleanly) {
    std::filesystem::create_directory(PathOf(folder_ / "sub"));
    std::filesystem::create_hard_link(PathOf(folder_ / "in.csv"), PathOf(folder_ / "link.csv"));
    const struct {
        std::string target;
        const char* report;
    } cases[] = {
        {folder_ / "missing/out.vkjson", "7 \"File_IO::Create\", Cannot create file."},
        {folder_ / "sub", "4 \"File_IO::Create\", path exists but is not a file."},
        {folder_ / "in.csv", "7 \"File_IO::Create\", Cannot create file."},
        {folder_ / "sub/../in.csv", "7 \"File_IO::Create\", Cannot create file."},
        {folder_ / "link.csv", "7 \"File_IO::Create\", Cannot create file."},
    };
    for (const auto& c : cases) {
        EXPECT_NE(stream_->SaveTo(c.target.c_str()), 0U);
        EXPECT_EQ(OnlyReport(), c.report) << c.target;
    }
    EXPECT_EQ(ReadWhole(folder_ / "in.csv"), kTable);
    EXPECT_EQ(folder_.FileCount(), 3U);
}

TEST_F(StreamTest, TemporaryDocumentGoesWithTheStream) {
    const std::string path = stream_->DocumentPath();
    EXPECT_TRUE(path.ends_with(".vkjson"));
    EXPECT_EQ(path, Utf8Of(PathOf(path).make_preferred())) << "with the system's own separators";
    EXPECT_TRUE(std::filesystem::exists(PathOf(path)));
    EXPECT_EQ(folder_.FileCount(), 1U);  // not beside the input
    manager_->ReleaseStream(&stream_);
    EXPECT_FALSE(std::filesystem::exists(PathOf(path)));
}

TEST(Stream, GoesWithTheManager) {
    const TestFolder folder;
    std::string path;
    {
        Manager manager;
        IVkjsonStream* stream = nullptr;
        ASSERT_EQ(manager->ConvertFile(&stream, folder.Write("in.csv", kTable).c_str(), 0), 0U);
        path = stream->DocumentPath();
        EXPECT_TRUE(std::filesystem::exists(PathOf(path)));
    }
    EXPECT_FALSE(std::filesystem::exists(PathOf(path)));
}

TEST(Stream, DocumentsAreTakenAsTheyAre) {
    const TestFolder folder;
    Manager manager;
    const struct {
        const char* name;
        std::string content;
        bool isDocument;
    } cases[] = {
        {"a.vkjson", "anything at all", true},
        {"b.csv", "{\"version\":\"vkjson2.0.0\"}", true},
        {"b.dat", " \n\t{ \"version\" : \"VKJSON2.0.0\" , broken", true},
        {"c.VKJSON", "{\"version\":\"vkjson2.0.0\"}", true},
        {"c.VKJSON2", "{\"Version\":\"vkjson2.0.0\"}", false},
        {"d.dat", "{\"creator\":\"x\",\"version\":\"vkjson2.0.0\"}", false},
        {"e.dat", "{\"version\":\"vkjson1.0.0\"}", false},
        {"f.dat", "{\"version\":\"vkjson2.0.0", false},
        {"g.dat", "", false},
        {"h.VKJSON", "no document", false},
    };
    for (const auto& c : cases) {
        const std::string path = folder.Write(c.name, c.content);
        IVkjsonStream* stream = nullptr;
        EXPECT_EQ(manager->ConvertFile(&stream, path.c_str(), 0), c.isDocument ? 0U : 25U) << c.name;
        if (stream == nullptr) continue;
        EXPECT_TRUE(std::filesystem::equivalent(PathOf(stream->DocumentPath()), PathOf(path)));
        EXPECT_EQ(stream->Size(), c.content.size());
        EXPECT_EQ(stream->SaveTo(path.c_str()), 0U);
        manager->ReleaseStream(&stream);
        EXPECT_EQ(ReadWhole(path), c.content);
    }
    TakeReports();
}

TEST(Stream, InputsThatFail) {
    const TestFolder folder;
    Manager manager;
    LastException(true);
    TakeReports();
    const std::string missing = folder / "missing.csv";
    const std::string longest(65534, 'p');
    const struct {
        std::string path;
        std::string report;
    } cases[] = {
        {"", "2 Input file path is NULL."},
        {longest + "p", "3 Input file path length is greater than the supported file path length."},
        {longest, "4 File not exist at input path:\"" + longest + "\"."},
        {missing, "4 File not exist at input path:\"" + missing + "\"."},
        {folder.Path(), "4 File not exist at input path:\"" + folder.Path() + "\"."},
        {folder.Write("a.unknown", kTable), "25 File Format Not Supported."},
        {folder.Write("noextension", kTable), "25 File Format Not Supported."},
        {folder.Write(".csv.d", kTable), "25 File Format Not Supported."},
    };
    for (const auto& c : cases) {
        IVkjsonStream* stream = reinterpret_cast<IVkjsonStream*>(1);
        ISensorFileHandler* handler = reinterpret_cast<ISensorFileHandler*>(1);
        EXPECT_NE(manager->ConvertFile(&stream, c.path.c_str(), 0), 0U);
        EXPECT_EQ(stream, nullptr);
        EXPECT_EQ(OnlyReport(), c.report);
        EXPECT_NE(manager->OpenFile(&handler, c.path.c_str(), nullptr), 0U);
        EXPECT_EQ(handler, nullptr);
        TakeReports();
    }
}

TEST(Stream, ValidationFailsWhatTheReaderRefuses) {
    const TestFolder folder;
    Manager manager;
    TakeReports();
    IVkjsonStream* stream = nullptr;
    EXPECT_EQ(manager->ConvertFile(&stream, folder.Write("good.csv", kTable).c_str(), 1), 0U);
    EXPECT_EQ(manager->ReleaseStream(&stream), 0U);
    // A backslash goes out as it is, and takes the closing quote with it.
    const std::string damaged = folder.Write("damaged.csv", "a\n\\\n");
    EXPECT_EQ(manager->ConvertFile(&stream, damaged.c_str(), 1), 32U);
    EXPECT_EQ(stream, nullptr);
    ASSERT_EQ(Reports().size(), 1U);
    EXPECT_GT(TakeReports()[0].extra1, 0);
    EXPECT_EQ(manager->ConvertFile(&stream, damaged.c_str(), 0), 0U);
    EXPECT_EQ(manager->ReleaseStream(&stream), 0U);
}

TEST(Stream, RelativeAccentedPath) {
    const TestFolder folder;
    // Relative paths count from the current folder, wherever it is.
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(PathOf(folder.Path()));
    folder.Write("r\xC3\xA9sum\xC3\xA9.csv", kTable);
    Manager manager;
    IVkjsonStream* stream = nullptr;
    EXPECT_EQ(manager->ConvertFile(&stream, "./r\xC3\xA9sum\xC3\xA9.csv", 0), 0U);
    std::filesystem::current_path(before);
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(stream->SaveTo((folder / "out.vkjson").c_str()), 0U);
    EXPECT_EQ(ReadWhole(folder / "out.vkjson").size(), stream->Size());
    manager->ReleaseStream(&stream);
}

// Conversions on several threads do not meet.
TEST(Stream, ThreadsConvertAtTheSameTime) {
    const TestFolder folder;
    Manager manager;
    IVkjsonStream* expected = nullptr;
    const std::string input = folder.Write("in.csv", kTable);
    ASSERT_EQ(manager->ConvertFile(&expected, input.c_str(), 0), 0U);
    const std::string document = ReadWhole(expected->DocumentPath());
    std::vector<std::thread> threads;
    std::atomic<int> equal{0};
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&] {
            for (int k = 0; k < 25; ++k) {
                IVkjsonStream* stream = nullptr;
                if (manager->ConvertFile(&stream, input.c_str(), 0) != 0) return;
                equal += ReadWhole(stream->DocumentPath()) == document ? 1 : 0;
                manager->ReleaseStream(&stream);
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(equal.load(), 100);
    manager->ReleaseStream(&expected);
}

}  // namespace zentor_test
