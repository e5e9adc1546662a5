// File_IO: the library's only road to the file system, apart from mappings. Every failure is a ZT_Exception whose first
// parameter is the name of the operation, in double quotes; codes stand with the operations. Nothing is retried.
//
// Paths are UTF-8; every operation that takes one can fail with 12 when it is no valid text for the system, or
// longer than any path there.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "util/os_file.h"

namespace zentor {

using FileHandle = os::FileHandle;
using os::Access;
using os::CreateOptions;
using os::PathKind;
inline constexpr FileHandle kNoFile = os::kNoFile;

class File_IO {
public:
    // Creates a regular file, or empties the one that is there. True when the file is new; false, with nothing changed,
    // when `exclusive` is asked for and something is there. Codes ZT_FILE_NOT_EXIST (there is something other than a
    // file), ZT_FILE_CREATE.
    static bool Create(const std::string& path, CreateOptions options = {});
    // `share`: others may read and write meanwhile (always so on POSIX). Codes ZT_FILE_PERMISSION (access denied or in
    // use), ZT_FILE_OPEN.
    static FileHandle Open(const std::string& path, bool share, Access access);
    static void Close(FileHandle file);           // ZT_FILE_CLOSE; the file is closed even then
    static void Delete(const std::string& path);  // ZT_FILE_DELETE, also when there is no such file
    static PathKind GetFileMode(const std::string& path);

    // `mode`: 0 from the start, 1 from the current position, 2 from the end. Returns the new position.
    // Code ZT_FILE_SEEK with the offset as first detail.
    static std::uint64_t Seek(FileHandle file, std::int64_t offset, std::uint32_t mode);
    // Returns how much was read; less than `count` is no error. Code ZT_FILE_READ, also for 2 GiB or more.
    static std::uint64_t Read(FileHandle file, void* buffer, std::uint64_t count);
    // Writes everything or fails: 34 when the disk is full, else 55, also for 2 GiB or more.
    static void Write(FileHandle file, const void* buffer, std::uint64_t count);
    static void SetEOF(FileHandle file, std::uint64_t length);  // cuts or extends the file; ZT_FILE_SEEK
    static std::uint64_t Length(FileHandle file);               // ZT_FILE_READ
    // Of the file at a path; 0 when that cannot be told.
    static std::uint64_t SizeOf(const std::string& path);

    static os::Folder* OpenFolder(const std::string& path);  // ZT_FOLDER_OPEN
    // The next entry of an open folder; false after the last one. Code ZT_FOLDER_OPEN.
    static bool ReadFolder(os::Folder* folder, std::string& name, PathKind& kind);
    static void CloseFolder(os::Folder* folder);  // ZT_FOLDER_CLOSE; null is ignored
    // What tells a folder from others, whatever leads to it. Code ZT_FOLDER_OPEN.
    static os::FileIdentity FolderIdentity(const std::string& path);

    // The folder for temporary files, without a slash at the end. Code ZT_TEMP_FOLDER.
    static std::string TempFolder();
    // Creates an empty file in it and sets `path`. True on success. Codes ZT_TEMP_FOLDER, ZT_TEMP_FILE.
    static bool GetTempFile(std::string& path);
    // Creates such a file, open for reading and writing, that is gone when it is closed or the process ends, however
    // that is. Codes ZT_TEMP_FOLDER, ZT_TEMP_FILE.
    static FileHandle OpenTempFile();

    // Codes ZT_GENERAL (a file is at the new path already), ZT_RENAME.
    static void Rename(const std::string& from, const std::string& to);
    // Exchanges the contents of two files by renaming, through a free name beside `a`; a failure on the way restores
    // both names. Code ZT_TEMP_FILE and those of Rename.
    static void SwapData(const std::string& a, const std::string& b);
    // The same, so that there is a file at `a` at every moment; where the system has no such step, by SwapData.
    // Codes ZT_TEMP_FILE, ZT_GENERAL, ZT_RENAME.
    static void Exchange(const std::string& a, const std::string& b);
    // What is in the file outlives a crash of the system; ZT_FILE_WRITE.
    static void Sync(const std::string& path);

    // Whether both paths name one existing file, whatever the spelling and through links.
    static bool IsSameFile(const std::string& a, const std::string& b);
    // What tells the file at a path from others; nothing when there is none, or the file system does not tell.
    static std::optional<os::FileIdentity> Identity(const std::string& path);
    static std::string AbsolutePath(const std::string& path);
    // Where an absolute path leads to through links.
    static std::string ResolveLinks(const std::string& path);
};

// Closes the file at the end of its scope, without failing.
class FileCloser {
public:
    explicit FileCloser(FileHandle file) : file_(file) {}
    ~FileCloser() { Close(); }
    FileCloser(const FileCloser&) = delete;
    FileCloser& operator=(const FileCloser&) = delete;

    FileHandle get() const { return file_; }
    FileHandle release() {
        const FileHandle file = file_;
        file_ = kNoFile;
        return file;
    }

private:
    void Close() noexcept {
        if (file_ != kNoFile) os::CloseFile(file_);
    }

    FileHandle file_;
};

// Deletes a file if it is there; never fails. For cleaning up after another failure.
void DeleteQuietly(const std::string& path) noexcept;

// For tests: asked before every operation on files (with its name, "File_IO::Write"); what it returns other than kOk
// happens in place of the operation. Null: nothing is asked. Deletions that clean up and closes of FileCloser are not.
using FileFaultHook = os::Status (*)(const char* operation);
void SetFileFaultHook(FileFaultHook hook) noexcept;

}  // namespace zentor
