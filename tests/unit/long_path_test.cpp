// Windows paths: their forms in full, on every system; what reaches Windows itself, there.
#include <gtest/gtest.h>

#include <set>

#include "failure.h"
#include "test_folder.h"
#include "util/long_path.h"
#if defined(_WIN32)
#include "util/win32/wide_path.h"
#endif

namespace zentor_test {

using namespace zentor;

namespace {

struct Case {
    const char* path;
    const char* form;
};

// The form of a path in full while the current folder is `current`, and on the drive D: D:\data\2.
std::string FormOf(const std::string& path, const std::string& current) {
    const auto folderOf = [&](const std::string& drive) {
        if (drive == "D:" || drive == "d:") return std::string(R"(D:\data\2)");
        return drive.empty() || drive == current.substr(0, 2) ? current : std::string();
    };
    const std::string absolute = AbsoluteWindowsPath(path, folderOf);
    EXPECT_EQ(AbsoluteWindowsPath(absolute, folderOf), absolute);
    return absolute.empty() ? "none" : LongPathForm(absolute);
}

}  // namespace

TEST(LongPath, FormsOfPaths) {
    const Case cases[] = {
        // Complete ones.
        {"C:/data/in.csv", R"(\\?\C:\data\in.csv)"},
        {R"(C:\data)", R"(\\?\C:\data)"},
        {R"(\\server\share\x)", R"(\\?\UNC\server\share\x)"},
        {"//server/share", R"(\\?\UNC\server\share)"},
        {R"(\\?\C:\x\..\aux)", R"(\\?\C:\x\..\aux)"},
        {R"(\\?\UNC\server\x)", R"(\\?\UNC\server\x)"},
        {"//?/C:/x", R"(\\?\C:\x)"},
        {R"(\\.\NUL)", R"(\\.\NUL)"},
        // Empty names, "." and "..", which lead out of no drive and no share.
        {R"(C:\)", R"(\\?\C:\)"},
        {R"(C:\.)", R"(\\?\C:\)"},
        {R"(c:\a\\b/./c\.)", R"(\\?\c:\a\b\c)"},
        {R"(C:\a\b\)", R"(\\?\C:\a\b\)"},
        {R"(C:\a\b\..\)", R"(\\?\C:\a\)"},
        {R"(C:\a\b\..\..\..\c)", R"(\\?\C:\c)"},
        {R"(C:\a\..)", R"(\\?\C:\)"},
        {R"(\\server\share\..\..\x\.\y)", R"(\\?\UNC\server\share\x\y)"},
        {R"(\\server\share\a\..\)", R"(\\?\UNC\server\share\)"},
        // Relative ones.
        {"x.csv", R"(\\?\C:\work\1\x.csv)"},
        {"../x", R"(\\?\C:\work\x)"},
        {".", R"(\\?\C:\work\1)"},
        {"..", R"(\\?\C:\work)"},
        {R"(sub\)", R"(\\?\C:\work\1\sub\)"},
        {R"(\x)", R"(\\?\C:\x)"},
        {"/", R"(\\?\C:\)"},
        {"/../x", R"(\\?\C:\x)"},
        {"C:x", R"(\\?\C:\work\1\x)"},
        {"C:", R"(\\?\C:\work\1)"},
        {"d:x", R"(\\?\D:\data\2\x)"},
        {"D:..", R"(\\?\D:\data)"},
        {"E:x", "none"},
        {"", "none"},
        // Names that are devices' for the system, or that it would change.
        {"aux.csv", R"(\\?\C:\work\1\aux.csv)"},
        {R"(C:\x\COM1)", R"(\\?\C:\x\COM1)"},
        {"nul.txt", R"(\\?\C:\work\1\nul.txt)"},
        {"NUL", R"(\\?\C:\work\1\NUL)"},
        {"D:con", R"(\\?\D:\data\2\con)"},
        {R"(\\server\share\prn)", R"(\\?\UNC\server\share\prn)"},
        {"end.", R"(\\?\C:\work\1\end.)"},
        {"end ", R"(\\?\C:\work\1\end )"},
        {"...", R"(\\?\C:\work\1\...)"},
        {"file:stream", R"(\\?\C:\work\1\file:stream)"},
    };
    for (const auto& [path, form] : cases) EXPECT_EQ(FormOf(path, R"(C:\work\1)"), form) << path;

    const struct {
        const char* current;
        Case expected;
    } elsewhere[] = {
        {R"(C:\)", {"x", R"(\\?\C:\x)"}},
        {R"(C:\)", {"..", R"(\\?\C:\)"}},
        {R"(\\server\share\a)", {R"(..\..\x)", R"(\\?\UNC\server\share\x)"}},
        {R"(\\server\share\a)", {R"(\x)", R"(\\?\UNC\server\share\x)"}},
        {R"(\\server\share)", {"x", R"(\\?\UNC\server\share\x)"}},
        {R"(\\?\C:\a)", {R"(..\..\x)", R"(\\?\C:\x)"}},
        {R"(\\?\C:\a)", {R"(\x)", R"(\\?\C:\x)"}},
        {R"(\\?\UNC\server\share\a)", {R"(\x)", R"(\\?\UNC\server\share\x)"}},
        {R"(\\?\UNC\server\share\a)", {R"(..\..\x)", R"(\\?\UNC\server\share\x)"}},
        {"", {"x", "none"}},
        {"", {"D:x", R"(\\?\D:\data\2\x)"}},
    };
    for (const auto& [current, expected] : elsewhere) {
        EXPECT_EQ(FormOf(expected.path, current), expected.form) << current;
    }
}

#if defined(_WIN32)

namespace {

std::string WideFormOf(const std::string& path) {
    std::wstring wide;
    std::string form;
    if (!os::WidePath(path, wide)) return "none";
    return os::ToUtf8(wide, form) ? form : "no text";
}

}  // namespace

TEST(LongPath, RelativePathsReachWindowsInFull) {
    const std::string current = Utf8Of(std::filesystem::current_path());
    const std::string drive = current.substr(0, 2);
    for (const std::string name : {"x", "aux.csv", "NUL", "com1"}) {
        const std::string form = R"(\\?\)" + current + "\\" + name;
        EXPECT_EQ(WideFormOf(name), form);
        EXPECT_EQ(WideFormOf(drive + name), form);
        EXPECT_EQ(WideFormOf(current + "/" + name), form);
        EXPECT_EQ(WideFormOf("/" + name), R"(\\?\)" + drive + "\\" + name);
    }
    EXPECT_EQ(WideFormOf("\xFF"), "none");
}

// Units, not bytes, are counted: with those of the prefix and a zero at the end.
TEST(LongPath, NothingLongerReachesWindows) {
    const std::string a = R"(C:\)";
    for (const std::string unit : {"a", "\u6F22"}) {
        const auto units = [&](std::size_t count) {
            std::string text;
            for (; count != 0; --count) text += unit;
            return text;
        };
        EXPECT_NE(WideFormOf(a + units(32759)), "none");
        EXPECT_EQ(WideFormOf(a + units(32760)), "none");
        EXPECT_NE(WideFormOf(R"(\\s\h\)" + units(32754)), "none");
        EXPECT_EQ(WideFormOf(R"(\\s\h\)" + units(32755)), "none");
        EXPECT_EQ(WideFormOf(units(32762)), "none");  // in the current folder
    }
    std::wstring full;
    EXPECT_TRUE(os::FullPath(a + std::string(32763, 'a'), full));
    EXPECT_FALSE(os::FullPath(a + std::string(32764, 'a'), full));
}

#endif

// No path leads to a file of another name; at one that is too long there is nothing, and nothing can be made there.
TEST(LongPath, PathsTooLongForTheSystem) {
    const TestFolder folder;
    const std::string file = folder.Write("file", "x");
#if defined(_WIN32)
    const std::string failures[] = {
        "12: \"File_IO::Create\", Cannot convert path.", "12: \"File_IO::Open\", Cannot convert path.",
        "12: \"File_IO::Delete\", Cannot convert path.", "16: \"File_IO::OpenFolder\",  path is not a folder."};
#else
    const std::string failures[] = {"7: \"File_IO::Create\", Cannot create file.", "6: \"Open\", failure.",
                                    "9: \"File_IO::Delete\", Cannot delete file.",
                                    "16: \"File_IO::OpenFolder\",  path is not a folder."};
#endif
    for (const std::size_t length : {32768u, 32800u, 65534u}) {
        for (const std::string& path : {folder / std::string(length, 'a'), std::string(length, 'a')}) {
            EXPECT_EQ(File_IO::GetFileMode(path), PathKind::kNone);
            EXPECT_EQ(FailureOf([&] { File_IO::Create(path); }), failures[0]);
            EXPECT_EQ(FailureOf([&] { File_IO::Open(path, true, Access::kRead); }), failures[1]);
            EXPECT_EQ(FailureOf([&] { File_IO::Delete(path); }), failures[2]);
            EXPECT_EQ(FailureOf([&] { File_IO::OpenFolder(path); }), failures[3]);
            EXPECT_EQ(FailureOf([&] { File_IO::Rename(file, path); }).substr(0, 3), "22:");
        }
    }
    EXPECT_EQ(folder.FileCount(), 1u);
}

// For Windows some names are devices in every folder, with any extension.
TEST(LongPath, NamesOfDevicesAreFiles) {
    const TestFolder folder;
    std::set<std::string> names;
    for (const std::string name : {"aux.csv", "COM1", "nul.txt", "con", "lpt1.vkjson", "prn"}) {
        const std::string path = folder / name;
        ASSERT_TRUE(File_IO::Create(path, {.exclusive = true})) << name;
        const FileHandle file = File_IO::Open(path, true, Access::kReadWrite);
        File_IO::Write(file, name.data(), name.size());
        EXPECT_EQ(File_IO::Length(file), name.size()) << name;
        File_IO::Close(file);
        EXPECT_EQ(File_IO::GetFileMode(path), PathKind::kFile) << name;
        names.insert(name);
    }
    std::set<std::string> listed;
    os::Folder* const listing = File_IO::OpenFolder(folder.Path());
    std::string name;
    for (PathKind kind; File_IO::ReadFolder(listing, name, kind);) listed.insert(name);
    File_IO::CloseFolder(listing);
    EXPECT_EQ(listed, names);
    for (const std::string& each : names) File_IO::Delete(folder / each);  // the folder's end would not find them
}

}  // namespace zentor_test
