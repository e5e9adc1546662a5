// The platform's file operations, without messages or exceptions: one implementation each in win32/ and posix/.
//
// Paths are UTF-8. A relative path counts from the current folder; on Windows paths may have either slash and up to
// 32,762 UTF-16 units, and are looked up in their wide, prefixed form: no name is a device's, and dots and blanks at
// the end of one belong to it.
#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <string>

namespace zentor::os {

// A system file handle; all ones: none.
using FileHandle = std::uint64_t;
inline constexpr FileHandle kNoFile = ~FileHandle{0};

struct Folder;  // an open folder listing

enum class Status {
    kOk,
    kBadPath,   // the path is not valid text for the system, or longer than any that it takes
    kNotFound,  // no such file or folder
    kExists,    // something is there already
    kDenied,    // access denied, or the file is in use
    kDiskFull,
    kNotSupported,  // neither the system nor the file system can do that
    kFailed,        // anything else
};

// The characters that separate the parts of a path; the last one is the system's own.
extern const char* const kPathSeparators;

enum class PathKind { kNone, kFile, kFolder, kOther };
enum class Access { kRead, kReadWrite, kAppend };
enum class SeekMode : std::uint32_t { kStart = 0, kCurrent = 1, kEnd = 2 };

struct CreateOptions {
    bool exclusive = false;  // fail with kExists rather than empty a file that is there
    bool ownerOnly = false;  // on systems with permission bits, nobody else may read the new file
};

Status GetPathKind(const std::string& path, PathKind& kind);
Status AbsolutePath(const std::string& path, std::string& absolute);
// The path of the existing file that an absolute path leads to through links; the path itself where there is none.
Status ResolveLinks(const std::string& path, std::string& resolved);
// Where the system keeps with each file who may use it: lets `to` be used by the same people as `from`, and as far as
// that is possible belong to the same one.
void CopyPermissions(const std::string& from, const std::string& to);
// Lets a file be used by everybody who may use what this process usually makes in that folder.
void GiveUsualPermissions(const std::string& path);
// What tells an existing file or folder from all others, whatever the path that leads to it.
struct FileIdentity {
    std::uint64_t volume = 0;
    std::uint64_t number = 0;  // 0: the file system does not tell
    std::uint64_t made = 0;    // when, where numbers of files that are gone are used again; 0: not known

    auto operator<=>(const FileIdentity&) const = default;
};
Status GetFileIdentity(const std::string& path, FileIdentity& identity);
// Whether both paths name the same existing file, links resolved; false when either does not exist.
Status IsSameFile(const std::string& a, const std::string& b, bool& same);

// Creates or empties a regular file and closes it again.
Status CreateEmptyFile(const std::string& path, CreateOptions options);
Status OpenFile(const std::string& path, bool share, Access access, FileHandle& file);
Status CloseFile(FileHandle file);
Status DeleteFileAt(const std::string& path);
// Gives a file another name; kExists when something has that name already.
Status MoveFileTo(const std::string& from, const std::string& to);
// Exchanges the names of two files so that at every moment there is one of them at `a`, and after a crash no more than
// one other file: `b`, or `b` with ".old" after it. kNotSupported where that cannot be.
Status ExchangeFiles(const std::string& a, const std::string& b);
// What is in the file outlives a crash of the system.
Status SyncFile(const std::string& path);

Status SeekFile(FileHandle file, std::int64_t offset, SeekMode mode, std::uint64_t& position);
// Counts are below 2 GiB. `done` may be less than `count`; on a read, 0 is the end of the file.
Status ReadFromFile(FileHandle file, void* buffer, std::size_t count, std::size_t& done);
Status WriteToFile(FileHandle file, const void* buffer, std::size_t count, std::size_t& done);
// Cuts or extends an open file at its position.
Status EndFileHere(FileHandle file);
Status GetFileLength(FileHandle file, std::uint64_t& length);
Status GetFileSize(const std::string& path, std::uint64_t& size);

Status TempFolder(std::string& path);
// Creates an empty file with a name of its own, beginning with "ZTT", in the folder for temporary files.
Status CreateTempFile(const std::string& folder, std::string& path);
// Creates such a file, open for reading and writing, that is gone when it is closed or the process ends, however that
// is.
Status OpenTempFile(const std::string& folder, FileHandle& file);

// Lists a folder: NextEntry gives one name at a time, without "." and "..", and kNotFound at the end.
Status OpenFolder(const std::string& path, Folder*& folder);
Status NextEntry(Folder* folder, std::string& name, PathKind& kind);
Status CloseFolder(Folder* folder);

}  // namespace zentor::os
