// The file layer: what every operation does, and code and text of every failure.
#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <map>

#include "failure.h"
#include "test_folder.h"
#include "util/file_mapper.h"

namespace zentor_test {

using namespace zentor;
using os::Status;

namespace {

std::string Content(const std::string& path) {
    const FileCloser file(File_IO::Open(path, true, Access::kRead));
    std::string content(static_cast<std::size_t>(File_IO::Length(file.get())), '?');
    EXPECT_EQ(File_IO::Read(file.get(), content.data(), content.size()), content.size());
    return content;
}

std::map<std::string, PathKind> Listing(const std::string& path) {
    std::map<std::string, PathKind> entries;
    os::Folder* folder = File_IO::OpenFolder(path);
    std::string name;
    for (PathKind kind; File_IO::ReadFolder(folder, name, kind);) entries[name] = kind;
    File_IO::CloseFolder(folder);
    return entries;
}

// A handle that is not open any more.
FileHandle ClosedFile(const std::string& path) {
    const FileHandle file = File_IO::Open(path, true, Access::kRead);
    File_IO::Close(file);
    return file;
}

}  // namespace

TEST(FileIo, FilesOfAnyName) {
    const TestFolder folder;
    // The last one makes a path of more than 260 characters.
    const std::string names[] = {"plain", "two words", "n\u00E9 \u6F22 \U0001F600", std::string(240, 'x')};
    for (const std::string& name : names) {
        const std::string path = folder / name;
        const std::string moved = path + "2";
        EXPECT_EQ(File_IO::GetFileMode(path), PathKind::kNone);
        EXPECT_TRUE(File_IO::Create(path)) << name;
        EXPECT_EQ(File_IO::GetFileMode(path), PathKind::kFile);
        FileHandle file = File_IO::Open(path, true, Access::kReadWrite);
        File_IO::Write(file, "0123456789", 10);
        EXPECT_EQ(File_IO::Seek(file, 4, 0), 4u);
        EXPECT_EQ(File_IO::Seek(file, -1, 1), 3u);
        File_IO::Write(file, "x", 1);
        EXPECT_EQ(File_IO::Seek(file, -2, 2), 8u);
        char rest[10] = {};
        EXPECT_EQ(File_IO::Read(file, rest, 10), 2u);
        EXPECT_STREQ(rest, "89");
        EXPECT_EQ(File_IO::Read(file, rest, 10), 0u);
        EXPECT_EQ(File_IO::Seek(file, 12, 0), 12u);  // past the end
        File_IO::SetEOF(file, 5);
        File_IO::Write(file, "!", 1);  // goes on at the new end
        File_IO::SetEOF(file, 8);
        EXPECT_EQ(File_IO::Length(file), 8u);
        File_IO::Close(file);
        EXPECT_EQ(Content(path), std::string("012x4!\0\0", 8));

        file = File_IO::Open(path, true, Access::kAppend);
        EXPECT_EQ(File_IO::Seek(file, 0, 0), 0u);
        File_IO::Write(file, "end", 3);
        EXPECT_EQ(Content(path), std::string("012x4!\0\0end", 11));  // open a second time
        File_IO::Close(file);

        EXPECT_FALSE(File_IO::Create(path, {.exclusive = true}));
        EXPECT_EQ(Content(path).size(), 11u);
        File_IO::Rename(path, moved);
        EXPECT_EQ(Listing(folder.Path()), (std::map<std::string, PathKind>{{name + "2", PathKind::kFile}}));
        FileMapper mapper;
        EXPECT_EQ(mapper.Map(moved), MapResult::kMapped);
        EXPECT_EQ(mapper.bytes(), std::string_view("012x4!\0\0end", 11));
        mapper.Unmap();
        EXPECT_FALSE(File_IO::Create(moved));
        EXPECT_EQ(Content(moved), "");
        File_IO::Delete(moved);
        EXPECT_TRUE(File_IO::Create(moved, {.exclusive = true, .ownerOnly = true}));
        File_IO::Delete(moved);
        EXPECT_EQ(Listing(folder.Path()).size(), 0u);
    }
}

TEST(FileIo, FoldersAreListed) {
    const TestFolder folder;
    std::filesystem::create_directory(PathOf(folder / "sub"));
    EXPECT_EQ(File_IO::GetFileMode(folder / "sub"), PathKind::kFolder);
    EXPECT_TRUE(Listing(folder / "sub").empty());
    folder.Write("\u00E9.csv", "1");
    folder.Write("b", "");
    for (const std::string& path : {folder.Path(), folder.Path() + "/"}) {
        EXPECT_EQ(Listing(path),
                  (std::map<std::string, PathKind>{
                      {"sub", PathKind::kFolder}, {"\u00E9.csv", PathKind::kFile}, {"b", PathKind::kFile}}));
    }
    File_IO::CloseFolder(nullptr);
}

TEST(FileIo, Failures) {
    const TestFolder folder;
    const std::string file = folder.Write("file", "abc");
    const std::string other = folder.Write("other", "x");
    const std::string missing = folder / "missing/x";
    const FileCloser readOnly(File_IO::Open(file, true, Access::kRead));
    const FileCloser open(File_IO::Open(other, true, Access::kReadWrite));
    constexpr std::uint64_t kTwoGib = 0x80000000;
    char byte = 0;
    const struct {
        std::function<void()> call;
        const char* failure;
    } cases[] = {
        {[&] { File_IO::Create(folder.Path()); }, "4: \"File_IO::Create\", path exists but is not a file."},
        {[&] { File_IO::Create(missing); }, "7: \"File_IO::Create\", Cannot create file."},
        {[&] { File_IO::Open(missing, true, Access::kRead); }, "6: \"Open\", failure."},
        {[&] { File_IO::Close(ClosedFile(file)); }, "8: \"File_IO::Close\", Cannot close file."},
        {[&] { File_IO::Delete(missing); }, "9: \"File_IO::Delete\", Cannot delete file."},
        {[&] { File_IO::Delete(folder.Path()); }, "9: \"File_IO::Delete\", Cannot delete file."},
        {[&] { File_IO::Seek(open.get(), 7, 3); }, "10: \"File_IO::Seek\", Invalid Seek mode. [7]"},
        {[&] { File_IO::Seek(open.get(), -5, 0); }, "10: \"File_IO::Seek\", SetFilePointerEx failure. [-5]"},
        {[&] { File_IO::Read(ClosedFile(file), &byte, 1); }, "11: \"File_IO::Read\", ReadFile failure."},
        {[&] { File_IO::Read(open.get(), &byte, kTwoGib); }, "11: \"File_IO::Read\", request too large."},
        {[&] { File_IO::Write(readOnly.get(), "x", 1); }, "55: \"File_IO::Write\",WriteFile failure."},
        {[&] { File_IO::Write(open.get(), "x", kTwoGib); }, "55: \"File_IO::Write\", request too large."},
        {[&] { File_IO::Write(open.get(), "x", 2 * kTwoGib + 1); }, "55: \"File_IO::Write\", request too large."},
        {[&] { File_IO::SetEOF(ClosedFile(file), 1); }, "10: \"File_IO::SetEOF\", SetFilePointerEx failure."},
        {[&] { File_IO::SetEOF(readOnly.get(), 1); }, "10: \"File_IO::SetEOF\", SetEndOfFile failure."},
        {[&] { File_IO::Length(ClosedFile(file)); }, "11: \"File_IO::Length\", failure."},
        {[&] { File_IO::OpenFolder(file); }, "16: \"File_IO::OpenFolder\",  path is not a folder."},
        {[&] { File_IO::OpenFolder(missing); }, "16: \"File_IO::OpenFolder\",  path is not a folder."},
        {[&] { File_IO::Rename(file, other); }, "21: \"File_IO::Rename\", New path does not exists."},
        {[&] { File_IO::Rename(file, folder.Path()); }, "21: \"File_IO::Rename\", New path does not exists."},
        {[&] { File_IO::Rename(missing, file + "2"); }, "22: \"File_IO::Rename\", Rename failure."},
        {[&] { File_IO::Rename(file, missing); }, "22: \"File_IO::Rename\", Rename failure."}};
    for (const auto& [call, failure] : cases) EXPECT_EQ(FailureOf(call), failure);
    EXPECT_EQ(Content(file), "abc");
    EXPECT_EQ(Content(other), "x");
}

// What cannot be brought about everywhere. Nothing changes; a close that fails closes the file all the same.
TEST(FileIo, InjectedFailures) {
    const TestFolder folder;
    const std::string path = folder.Write("file", "abc");
    const FileCloser file(File_IO::Open(path, true, Access::kReadWrite));
    os::Folder* const listing = File_IO::OpenFolder(folder.Path());
    std::string name;
    PathKind kind;
    const std::map<std::string, std::function<void()>> calls = {
        {"Create", [&] { File_IO::Create(path); }},
        {"Open", [&] { File_IO::Open(path, true, Access::kRead); }},
        {"Close", [&] { File_IO::Close(File_IO::Open(path, true, Access::kRead)); }},
        {"Delete", [&] { File_IO::Delete(path); }},
        {"Read", [&] { File_IO::Read(file.get(), name.data(), 1); }},
        {"Write", [&] { File_IO::Write(file.get(), "x", 1); }},
        {"GetFileMode", [&] { File_IO::GetFileMode(path); }},
        {"OpenFolder", [&] { File_IO::OpenFolder(folder.Path()); }},
        {"ReadFolder", [&] { File_IO::ReadFolder(listing, name, kind); }},
        {"CloseFolder", [&] { File_IO::CloseFolder(listing); }},
        {"GetTempFile", [&] { File_IO::GetTempFile(name); }},
        {"Rename", [&] { File_IO::Rename(path, path + "2"); }},
        {"IsSameFile", [&] { File_IO::IsSameFile(path, path); }},
        {"Identity", [&] { File_IO::Identity(path); }},
        {"AbsolutePath", [&] { File_IO::AbsolutePath(path); }}};
    const struct {
        const char* operation;
        Status status;
        const char* failure;
        int n = 1;
    } cases[] = {{"Create", Status::kExists, "7: \"File_IO::Create\", Cannot create file."},
                 {"Open", Status::kDenied, "13: \"Open\", file permission error"},
                 {"Open", Status::kExists, "6: \"Open\", failure."},
                 {"Write", Status::kDiskFull, "34: \"File_IO::Write\", Disk Full."},
                 {"Write", Status::kDenied, "55: \"File_IO::Write\",WriteFile failure."},
                 {"OpenFolder", Status::kFailed, "16: \"File_IO::OpenFolder\", FindFirstFileW failure."},
                 {"ReadFolder", Status::kFailed, "16: \"File_IO::ReadFolder\", FindNextFileW failure."},
                 {"CloseFolder", Status::kFailed, "17: \"File_IO::CloseFolder\", FindClose failure."},
                 {"GetTempFile", Status::kNotFound, "14: \"File_IO::GetTempFile\", Cannot find temp file directory"},
                 {"GetTempFile", Status::kExists, "15: \"File_IO::GetTempFile\", Cannot find temp file name", 2},
                 {"Rename", Status::kBadPath, "22: \"File_IO::Rename\", GetWidePath failure."}};
    for (const auto& [operation, status, failure, n] : cases) {
        const std::string fullName = std::string("File_IO::") + operation;
        const FileFault fault(fullName, n, status);
        EXPECT_EQ(FailureOf(calls.at(operation)), failure);
    }
    for (const auto& [operation, call] : calls) {
        if (operation == "Rename") continue;
        const std::string fullName = "File_IO::" + operation;
        const FileFault fault(fullName, 1, Status::kBadPath);
        EXPECT_EQ(FailureOf(call), "12: \"" + fullName + "\", Cannot convert path.");
    }
    File_IO::CloseFolder(listing);
    EXPECT_EQ(Content(path), "abc");
    EXPECT_EQ(folder.FileCount(), 1u);
}

TEST(FileIo, TemporaryFiles) {
    const std::string folder = File_IO::TempFolder();
    EXPECT_EQ(File_IO::GetFileMode(folder), PathKind::kFolder);
    if (const char* const given = std::getenv("ZENTOR_TEST_FOLDER")) {  // of this test alone
        EXPECT_EQ(PathOf(folder).filename(), PathOf(given).filename());
    }
    EXPECT_EQ(std::string("/\\").find(folder.back()), std::string::npos);
    std::string paths[2] = {"old", ""};
    for (std::string& path : paths) {
        ASSERT_TRUE(File_IO::GetTempFile(path));
        EXPECT_TRUE(path.starts_with(folder)) << path;
        EXPECT_EQ(path.substr(folder.size() + 1, 3), "ZTT") << path;
        EXPECT_EQ(Content(path), "");
    }
    EXPECT_NE(paths[0], paths[1]);
    for (const std::string& path : paths) {
        File_IO::Delete(path);
        DeleteQuietly(path);  // not there any more
    }
}

TEST(FileIo, ExchangeIsOneStepWhereTheSystemHasOne) {
    const TestFolder folder;
    for (const os::Status status : {os::Status::kOk, os::Status::kNotSupported}) {
        const std::string a = folder.Write("a", "A");
        const std::string b = folder.Write("b", "B");
        const FileFault fault("File_IO::Exchange", 1, status);
        File_IO::Exchange(a, b);
        EXPECT_EQ(ReadWhole(a), "B");
        EXPECT_EQ(ReadWhole(b), "A");
        EXPECT_EQ(FailureOf([&] { File_IO::Exchange(a, folder / "none"); }).substr(0, 2), "22");
        EXPECT_EQ(FailureOf([&] { File_IO::Exchange(folder / "none", b); }).substr(0, 2), "22");
        EXPECT_EQ(ReadWhole(a) + ReadWhole(b), "BA");
    }
    EXPECT_EQ(folder.FileCount(), 2U);
}

TEST(FileIo, SwapDataExchangesContents) {
    const TestFolder folder;
    const std::string a = folder.Write("x.vkjson", "first");
    const std::string b = folder.Write("y.vkjson", "second");
    File_IO::SwapData(a, b);
    EXPECT_EQ(Content(a) + Content(b), "secondfirst");
    EXPECT_EQ(folder.FileCount(), 2u);

    // Whichever renaming fails, both names are as before.
    for (int n = 1; n <= 3; ++n) {
        const FileFault fault("File_IO::Rename", n, Status::kFailed);
        EXPECT_EQ(FailureOf([&] { File_IO::SwapData(a, b); }), "22: \"File_IO::Rename\", Rename failure.") << n;
        EXPECT_EQ(Content(a) + Content(b), "secondfirst") << n;
        EXPECT_EQ(folder.FileCount(), 2u) << n;
    }
    EXPECT_EQ(FailureOf([&] { File_IO::SwapData(a, folder / "none"); }), "22: \"File_IO::Rename\", Rename failure.");
    EXPECT_EQ(FailureOf([&] { File_IO::SwapData(folder / "none", b); }), "22: \"File_IO::Rename\", Rename failure.");
    EXPECT_EQ(Content(a) + Content(b), "secondfirst");

    // The spare name is the first that is free: with all but one taken, swapping still works.
    for (int k = 0; k < 100; ++k) {
        const std::string digits = {static_cast<char>('0' + k / 10), static_cast<char>('0' + k % 10)};
        if (k != 42) folder.Write("x.vkjson._" + digits + "_", "taken");
    }
    File_IO::SwapData(a, b);
    EXPECT_EQ(Content(a) + Content(b), "firstsecond");
    EXPECT_EQ(folder.FileCount(), 101u);
    folder.Write("x.vkjson._42_", "taken");
    EXPECT_EQ(FailureOf([&] { File_IO::SwapData(a, b); }), "15: \"File_IO::SwapData\", Cannot create temp file path.");
    EXPECT_EQ(Content(a) + Content(b), "firstsecond");
}

TEST(FileIo, IdentityOfFiles) {
    const TestFolder folder;
    const std::string file = folder.Write("file", "same");
    const std::string copy = folder.Write("copy", "same");
    std::filesystem::create_directory(PathOf(folder / "sub"));
    std::filesystem::create_hard_link(PathOf(file), PathOf(folder / "link"));
    for (const char* spelling : {"file", "link", "./file", "sub/../file", "sub/.././link"}) {
        EXPECT_TRUE(File_IO::IsSameFile(file, folder.Path() + "/" + spelling)) << spelling;
        EXPECT_EQ(File_IO::Identity(folder.Path() + "/" + spelling), File_IO::Identity(file)) << spelling;
    }
    EXPECT_NE(File_IO::Identity(file), std::nullopt);
    EXPECT_NE(File_IO::Identity(file), File_IO::Identity(copy));
    EXPECT_NE(File_IO::Identity(folder.Path()), File_IO::Identity(folder / "sub"));
    EXPECT_EQ(File_IO::Identity(folder / "none"), std::nullopt);
    EXPECT_FALSE(File_IO::IsSameFile(file, copy));
    EXPECT_FALSE(File_IO::IsSameFile(file, folder / "none"));
    EXPECT_FALSE(File_IO::IsSameFile(folder / "none", folder / "none"));
    EXPECT_EQ(PathOf(File_IO::AbsolutePath("\u00E9/x")), std::filesystem::current_path() / PathOf("\u00E9") / "x");
    EXPECT_EQ(PathOf(File_IO::AbsolutePath(file)), PathOf(file));
}

TEST(FileMapper, Results) {
    const TestFolder folder;
    std::string content(200000, 'm');
    content[100000] = '\0';
    FileMapper mapper;
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(mapper.Map(folder.Write("full", content)), MapResult::kMapped);
        EXPECT_TRUE(mapper.bytes() == content);
        const std::pair<std::string, MapResult> failures[] = {{folder.Write("empty", ""), MapResult::kEmpty},
                                                              {folder / "none", MapResult::kCannotOpen},
                                                              {folder.Path(), MapResult::kCannotOpen}};
        for (const auto& [path, result] : failures) {
            EXPECT_EQ(mapper.Map(path), result) << path;
            EXPECT_TRUE(mapper.bytes().empty());  // what was mapped before is let go
        }
    }
    // The file is not kept open.
    EXPECT_EQ(mapper.Map(folder / "full"), MapResult::kMapped);
    File_IO::Rename(folder / "full", folder / "moved");
    EXPECT_EQ(mapper.bytes().size(), content.size());
}

}  // namespace zentor_test
