#include "files/file_io.h"

#include <atomic>

#include "errors/raise.h"

namespace zentor {

namespace {

constexpr std::uint64_t kLargestRequest = 0x7FFFFFFF;

std::atomic<FileFaultHook> faultHook{nullptr};

os::Status Injected(const char* operation) {
    const FileFaultHook hook = faultHook.load(std::memory_order_relaxed);
    return hook == nullptr ? os::Status::kOk : hook(operation);
}

// Runs one system operation on behalf of `operation`; a path that is no text for the system ends here.
template <class Call>
os::Status Try(const char* operation, Call&& call) {
    os::Status status = Injected(operation);
    if (status == os::Status::kOk) status = call();
    if (status == os::Status::kBadPath) Raise(kConvertPath, Quoted(operation));
    return status;
}

bool IsThere(const std::string& path) { return File_IO::GetFileMode(path) != PathKind::kNone; }

}  // namespace

void SetFileFaultHook(FileFaultHook hook) noexcept { faultHook.store(hook); }

void DeleteQuietly(const std::string& path) noexcept {
    try {
        os::DeleteFileAt(path);
    } catch (...) {
        // Without memory for the system's form of the path the file stays.
    }
}

PathKind File_IO::GetFileMode(const std::string& path) {
    PathKind kind = PathKind::kNone;
    Try("File_IO::GetFileMode", [&] { return os::GetPathKind(path, kind); });
    return kind;
}

bool File_IO::Create(const std::string& path, CreateOptions options) {
    constexpr const char* kName = "File_IO::Create";
    const PathKind before = GetFileMode(path);
    if (before != PathKind::kNone && before != PathKind::kFile) Raise(kNotAFile, Quoted(kName));
    const os::Status status = Try(kName, [&] { return os::CreateEmptyFile(path, options); });
    if (status == os::Status::kExists && options.exclusive) return false;
    if (status != os::Status::kOk) Raise(kCreateFile, Quoted(kName));
    return before == PathKind::kNone;
}

FileHandle File_IO::Open(const std::string& path, bool share, Access access) {
    FileHandle file = kNoFile;
    const os::Status status = Try("File_IO::Open", [&] { return os::OpenFile(path, share, access, file); });
    if (status == os::Status::kDenied) Raise(kFilePermission, Quoted("Open"));
    if (status != os::Status::kOk) Raise(kOpenFailure, Quoted("Open"));
    return file;
}

void File_IO::Close(FileHandle file) {
    constexpr const char* kName = "File_IO::Close";
    // A close that fails has closed the file all the same, and so does one that is made to fail.
    const os::Status closed = os::CloseFile(file);
    if (Try(kName, [&] { return closed; }) != os::Status::kOk) Raise(kCloseFile, Quoted(kName));
}

void File_IO::Delete(const std::string& path) {
    constexpr const char* kName = "File_IO::Delete";
    if (Try(kName, [&] { return os::DeleteFileAt(path); }) != os::Status::kOk) Raise(kDeleteFile, Quoted(kName));
}

std::uint64_t File_IO::Seek(FileHandle file, std::int64_t offset, std::uint32_t mode) {
    constexpr const char* kName = "File_IO::Seek";
    if (mode > 2) Raise({kSeekFileMode, offset}, Quoted(kName));
    std::uint64_t position = 0;
    const os::Status status =
        Try(kName, [&] { return os::SeekFile(file, offset, static_cast<os::SeekMode>(mode), position); });
    if (status != os::Status::kOk) Raise({kSeekFailure, offset}, Quoted(kName), "SetFilePointerEx");
    return position;
}

std::uint64_t File_IO::Read(FileHandle file, void* buffer, std::uint64_t count) {
    constexpr const char* kName = "File_IO::Read";
    if (count > kLargestRequest) Raise(kReadLargeRequest, Quoted(kName));
    std::size_t done = 0;
    const os::Status status = Try(kName, [&] { return os::ReadFromFile(file, buffer, count, done); });
    if (status != os::Status::kOk) Raise(kReadFailure, Quoted(kName), "ReadFile");
    return done;
}

void File_IO::Write(FileHandle file, const void* buffer, std::uint64_t count) {
    constexpr const char* kName = "File_IO::Write";
    if (count > kLargestRequest) Raise(kWriteLargeRequest, Quoted(kName));
    std::size_t done = 0;
    const os::Status status = Try(kName, [&] { return os::WriteToFile(file, buffer, count, done); });
    if (status == os::Status::kDiskFull) Raise(kDiskFull, Quoted(kName));
    if (status != os::Status::kOk || done != count) Raise(kWriteFailure, Quoted(kName));
}

void File_IO::SetEOF(FileHandle file, std::uint64_t length) {
    constexpr const char* kName = "File_IO::SetEOF";
    std::uint64_t position = 0;
    os::Status status = Try(
        kName, [&] { return os::SeekFile(file, static_cast<std::int64_t>(length), os::SeekMode::kStart, position); });
    if (status != os::Status::kOk) Raise(kSeekFailure, Quoted(kName), "SetFilePointerEx");
    status = Try(kName, [&] { return os::EndFileHere(file); });
    if (status != os::Status::kOk) Raise(kSeekFailure, Quoted(kName), "SetEndOfFile");
}

std::uint64_t File_IO::Length(FileHandle file) {
    constexpr const char* kName = "File_IO::Length";
    std::uint64_t length = 0;
    const os::Status status = Try(kName, [&] { return os::GetFileLength(file, length); });
    if (status != os::Status::kOk) Raise(kLengthFailure, Quoted(kName));
    return length;
}

std::uint64_t File_IO::SizeOf(const std::string& path) {
    std::uint64_t size = 0;
    return os::GetFileSize(path, size) == os::Status::kOk ? size : 0;
}

os::Folder* File_IO::OpenFolder(const std::string& path) {
    constexpr const char* kName = "File_IO::OpenFolder";
    if (GetFileMode(path) != PathKind::kFolder) Raise(kOpenFolder, Quoted(kName));
    os::Folder* folder = nullptr;
    const os::Status status = Try(kName, [&] { return os::OpenFolder(path, folder); });
    if (status != os::Status::kOk) Raise(kOpenFolderFailure, Quoted(kName), "FindFirstFileW");
    return folder;
}

bool File_IO::ReadFolder(os::Folder* folder, std::string& name, PathKind& kind) {
    constexpr const char* kName = "File_IO::ReadFolder";
    const os::Status status = Try(kName, [&] { return os::NextEntry(folder, name, kind); });
    if (status == os::Status::kNotFound) return false;
    if (status != os::Status::kOk) Raise(kOpenFolderFailure, Quoted(kName), "FindNextFileW");
    return true;
}

void File_IO::CloseFolder(os::Folder* folder) {
    constexpr const char* kName = "File_IO::CloseFolder";
    if (folder == nullptr) return;
    const os::Status status = Try(kName, [&] { return os::CloseFolder(folder); });
    if (status != os::Status::kOk) Raise(kCloseFolderFailure, Quoted(kName), "FindClose");
}

os::FileIdentity File_IO::FolderIdentity(const std::string& path) {
    constexpr const char* kName = "File_IO::FolderIdentity";
    os::FileIdentity identity;
    const os::Status status = Try(kName, [&] { return os::GetFileIdentity(path, identity); });
    if (status != os::Status::kOk) Raise(kOpenFolderFailure, Quoted(kName), "GetFileInformationByHandle");
    return identity;
}

std::string File_IO::TempFolder() {
    constexpr const char* kName = "File_IO::GetTempFile";
    std::string folder;
    const os::Status status = Try(kName, [&] { return os::TempFolder(folder); });
    if (status != os::Status::kOk) Raise(kTempDirectory, Quoted(kName));
    while (folder.size() > 1 && (folder.back() == '/' || folder.back() == '\\')) folder.pop_back();
    return folder;
}

bool File_IO::GetTempFile(std::string& path) {
    constexpr const char* kName = "File_IO::GetTempFile";
    const std::string folder = TempFolder();
    const os::Status status = Try(kName, [&] { return os::CreateTempFile(folder, path); });
    if (status != os::Status::kOk) Raise(kTempFile, Quoted(kName));
    return true;
}

FileHandle File_IO::OpenTempFile() {
    constexpr const char* kName = "File_IO::GetTempFile";
    const std::string folder = TempFolder();
    FileHandle file = kNoFile;
    const os::Status status = Try(kName, [&] { return os::OpenTempFile(folder, file); });
    if (status != os::Status::kOk) Raise(kTempFile, Quoted(kName));
    return file;
}

void File_IO::Rename(const std::string& from, const std::string& to) {
    constexpr const char* kName = "File_IO::Rename";
    PathKind kind = PathKind::kNone;
    os::Status status = os::GetPathKind(to, kind);
    if (status == os::Status::kOk && kind != PathKind::kNone) Raise(kRenameOntoFile, Quoted(kName));
    if (status == os::Status::kOk) status = Injected(kName);
    if (status == os::Status::kOk) status = os::MoveFileTo(from, to);
    if (status == os::Status::kBadPath) Raise(kRenamePath, Quoted(kName));
    if (status != os::Status::kOk) Raise(kRenameFailure, Quoted(kName));
}

void File_IO::SwapData(const std::string& a, const std::string& b) {
    std::string spare;
    for (char tens = '0'; tens <= '9' && spare.empty(); ++tens) {
        for (char ones = '0'; ones <= '9' && spare.empty(); ++ones) {
            const std::string candidate = a + "._" + tens + ones + "_";
            if (!IsThere(candidate)) spare = candidate;
        }
    }
    if (spare.empty()) Raise(kSwapData, Quoted("File_IO::SwapData"));
    Rename(a, spare);
    try {
        Rename(b, a);
        try {
            Rename(spare, b);
        } catch (...) {
            os::MoveFileTo(a, b);
            throw;
        }
    } catch (...) {
        os::MoveFileTo(spare, a);
        throw;
    }
}

void File_IO::Exchange(const std::string& a, const std::string& b) {
    constexpr const char* kName = "File_IO::Exchange";
    const os::Status status = Try(kName, [&] { return os::ExchangeFiles(a, b); });
    if (status == os::Status::kNotSupported) return SwapData(a, b);
    if (status != os::Status::kOk) Raise(kRenameFailure, Quoted(kName));
}

void File_IO::Sync(const std::string& path) {
    constexpr const char* kName = "File_IO::Sync";
    const os::Status status = Try(kName, [&] { return os::SyncFile(path); });
    // Some file systems know nothing of it.
    if (status != os::Status::kOk && status != os::Status::kNotSupported) Raise(kWriteFailure, Quoted(kName));
}

bool File_IO::IsSameFile(const std::string& a, const std::string& b) {
    bool same = false;
    Try("File_IO::IsSameFile", [&] { return os::IsSameFile(a, b, same); });
    return same;
}

std::optional<os::FileIdentity> File_IO::Identity(const std::string& path) {
    os::FileIdentity identity;
    const os::Status status = Try("File_IO::Identity", [&] { return os::GetFileIdentity(path, identity); });
    if (status != os::Status::kOk || identity.number == 0) return std::nullopt;
    return identity;
}

std::string File_IO::AbsolutePath(const std::string& path) {
    constexpr const char* kName = "File_IO::AbsolutePath";
    std::string absolute;
    const os::Status status = Try(kName, [&] { return os::AbsolutePath(path, absolute); });
    if (status != os::Status::kOk) Raise(kConvertPath, Quoted(kName));
    return absolute;
}

std::string File_IO::ResolveLinks(const std::string& path) {
    constexpr const char* kName = "File_IO::ResolveLinks";
    std::string resolved;
    const os::Status status = Try(kName, [&] { return os::ResolveLinks(path, resolved); });
    if (status != os::Status::kOk) Raise(kConvertPath, Quoted(kName));
    return resolved;
}

}  // namespace zentor
