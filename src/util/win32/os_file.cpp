#include "util/os_file.h"

#include <windows.h>

#include <memory>

#include "util/win32/wide_path.h"

namespace zentor::os {

const char* const kPathSeparators = "/\\";

struct Folder {
    HANDLE search;
    WIN32_FIND_DATAW current;
    bool pending;  // `current` has not been handed out yet
};

namespace {

Status FromLastError() {
    switch (GetLastError()) {
        case ERROR_FILE_NOT_FOUND:
        case ERROR_PATH_NOT_FOUND:
        case ERROR_NO_MORE_FILES:
            return Status::kNotFound;
        case ERROR_FILE_EXISTS:
        case ERROR_ALREADY_EXISTS:
            return Status::kExists;
        case ERROR_ACCESS_DENIED:
        case ERROR_SHARING_VIOLATION:
        case ERROR_LOCK_VIOLATION:
        case ERROR_WRITE_PROTECT:
            return Status::kDenied;
        case ERROR_DISK_FULL:
        case ERROR_HANDLE_DISK_FULL:
            return Status::kDiskFull;
        case ERROR_NOT_SUPPORTED:
        case ERROR_INVALID_FUNCTION:
        case ERROR_CALL_NOT_IMPLEMENTED:
            return Status::kNotSupported;
        default:
            return Status::kFailed;
    }
}

Status Check(bool succeeded) { return succeeded ? Status::kOk : FromLastError(); }

HANDLE Handle(FileHandle file) { return reinterpret_cast<HANDLE>(file); }

PathKind KindOf(DWORD attributes) {
    if (attributes & FILE_ATTRIBUTE_DIRECTORY) return PathKind::kFolder;
    return attributes & FILE_ATTRIBUTE_DEVICE ? PathKind::kOther : PathKind::kFile;
}

constexpr DWORD kFileAttributes = FILE_ATTRIBUTE_NORMAL | FILE_FLAG_RANDOM_ACCESS;

}  // namespace

Status GetPathKind(const std::string& path, PathKind& kind) {
    kind = PathKind::kNone;
    std::wstring wide;
    if (!WidePath(path, wide)) {
        const bool isTooLong = !path.empty() && ToWide(path, wide);  // for anything to be there
        return isTooLong ? Status::kOk : Status::kBadPath;
    }
    const DWORD attributes = GetFileAttributesW(wide.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES) kind = KindOf(attributes);
    return Status::kOk;
}

Status AbsolutePath(const std::string& path, std::string& absolute) {
    std::wstring full;
    return FullPath(path, full) && ToUtf8(full, absolute) ? Status::kOk : Status::kBadPath;
}

Status ResolveLinks(const std::string& path, std::string& resolved) {
    resolved = path;
    std::wstring wide;
    if (!WidePath(path, wide)) return Status::kBadPath;
    const DWORD attributes = GetFileAttributesW(wide.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) return Status::kOk;
    const HANDLE file = CreateFileW(wide.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return Status::kOk;
    std::wstring target(kLongestPath, L'\0');
    const std::size_t length =
        GetFinalPathNameByHandleW(file, target.data(), static_cast<DWORD>(target.size()), FILE_NAME_NORMALIZED);
    CloseHandle(file);
    if (length == 0 || length >= target.size()) return Status::kOk;
    target.resize(length);
    return ToUtf8(target, resolved) ? Status::kOk : Status::kBadPath;
}

// A file's permissions are those of its folder unless somebody has set others.
void CopyPermissions(const std::string&, const std::string&) {}
void GiveUsualPermissions(const std::string&) {}

Status GetFileIdentity(const std::string& path, FileIdentity& identity) {
    std::wstring wide;
    if (!WidePath(path, wide)) return Status::kBadPath;
    const HANDLE file = CreateFileW(wide.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);  // folders want this flag
    if (file == INVALID_HANDLE_VALUE) return FromLastError();
    BY_HANDLE_FILE_INFORMATION info;
    const Status status = Check(GetFileInformationByHandle(file, &info) != 0);
    CloseHandle(file);
    if (status != Status::kOk) return status;
    identity = {info.dwVolumeSerialNumber, (std::uint64_t{info.nFileIndexHigh} << 32) | info.nFileIndexLow, 0};
    return Status::kOk;
}

Status IsSameFile(const std::string& a, const std::string& b, bool& same) {
    FileIdentity first;
    FileIdentity second;
    same = GetFileIdentity(a, first) == Status::kOk && GetFileIdentity(b, second) == Status::kOk && first == second &&
           (first.number != 0 || a == b);
    return Status::kOk;
}

Status CreateEmptyFile(const std::string& path, CreateOptions options) {
    std::wstring wide;
    if (!WidePath(path, wide)) return Status::kBadPath;
    const HANDLE file = CreateFileW(wide.c_str(), GENERIC_READ | FILE_APPEND_DATA, 0, nullptr,
                                    options.exclusive ? CREATE_NEW : CREATE_ALWAYS, kFileAttributes, nullptr);
    if (file == INVALID_HANDLE_VALUE) return FromLastError();
    return Check(CloseHandle(file) != 0);
}

Status OpenFile(const std::string& path, bool share, Access access, FileHandle& file) {
    constexpr DWORD kAccess[] = {GENERIC_READ, GENERIC_READ | GENERIC_WRITE, GENERIC_READ | FILE_APPEND_DATA};
    file = kNoFile;
    std::wstring wide;
    if (!WidePath(path, wide)) return Status::kBadPath;
    const HANDLE opened =
        CreateFileW(wide.c_str(), kAccess[static_cast<int>(access)], share ? FILE_SHARE_READ | FILE_SHARE_WRITE : 0,
                    nullptr, OPEN_EXISTING, kFileAttributes, nullptr);
    if (opened == INVALID_HANDLE_VALUE) return FromLastError();
    file = reinterpret_cast<FileHandle>(opened);
    return Status::kOk;
}

Status CloseFile(FileHandle file) { return Check(CloseHandle(Handle(file)) != 0); }

Status DeleteFileAt(const std::string& path) {
    std::wstring wide;
    if (!WidePath(path, wide)) return Status::kBadPath;
    return Check(DeleteFileW(wide.c_str()) != 0);
}

Status MoveFileTo(const std::string& from, const std::string& to) {
    std::wstring wideFrom;
    std::wstring wideTo;
    if (!WidePath(from, wideFrom) || !WidePath(to, wideTo)) return Status::kBadPath;
    return Check(MoveFileExW(wideFrom.c_str(), wideTo.c_str(), 0) != 0);
}

// The file that is replaced gets a third name first, and its permissions go over to the other one.
Status ExchangeFiles(const std::string& a, const std::string& b) {
    std::wstring wideA;
    std::wstring wideB;
    if (!WidePath(a, wideA) || !WidePath(b, wideB)) return Status::kBadPath;
    const std::wstring old = wideB + L".old";
    if (ReplaceFileW(wideA.c_str(), wideB.c_str(), old.c_str(), 0, nullptr, nullptr) == 0) {
        const Status status = FromLastError();
        // It may have come as far as the third name.
        if (GetFileAttributesW(wideA.c_str()) == INVALID_FILE_ATTRIBUTES) MoveFileExW(old.c_str(), wideA.c_str(), 0);
        return status;
    }
    if (MoveFileExW(old.c_str(), wideB.c_str(), 0) != 0) return Status::kOk;
    const Status status = FromLastError();
    ReplaceFileW(wideA.c_str(), old.c_str(), wideB.c_str(), 0, nullptr, nullptr);
    return status;
}

Status SyncFile(const std::string& path) {
    std::wstring wide;
    if (!WidePath(path, wide)) return Status::kBadPath;
    const HANDLE file = CreateFileW(wide.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return FromLastError();
    const Status status = Check(FlushFileBuffers(file) != 0);
    CloseHandle(file);
    return status;
}

Status SeekFile(FileHandle file, std::int64_t offset, SeekMode mode, std::uint64_t& position) {
    constexpr DWORD kOrigins[] = {FILE_BEGIN, FILE_CURRENT, FILE_END};
    LARGE_INTEGER distance;
    LARGE_INTEGER reached;
    distance.QuadPart = offset;
    reached.QuadPart = 0;
    const bool moved = SetFilePointerEx(Handle(file), distance, &reached, kOrigins[static_cast<int>(mode)]) != 0;
    position = static_cast<std::uint64_t>(reached.QuadPart);
    return Check(moved);
}

Status ReadFromFile(FileHandle file, void* buffer, std::size_t count, std::size_t& done) {
    DWORD got = 0;
    const bool succeeded = ReadFile(Handle(file), buffer, static_cast<DWORD>(count), &got, nullptr) != 0;
    done = got;
    return Check(succeeded);
}

Status WriteToFile(FileHandle file, const void* buffer, std::size_t count, std::size_t& done) {
    DWORD put = 0;
    const bool succeeded = WriteFile(Handle(file), buffer, static_cast<DWORD>(count), &put, nullptr) != 0;
    done = put;
    if (succeeded && put < count) return Status::kDiskFull;
    return Check(succeeded);
}

Status EndFileHere(FileHandle file) { return Check(SetEndOfFile(Handle(file)) != 0); }

Status GetFileLength(FileHandle file, std::uint64_t& length) {
    LARGE_INTEGER size;
    const bool known = GetFileSizeEx(Handle(file), &size) != 0;
    length = known ? static_cast<std::uint64_t>(size.QuadPart) : 0;
    return Check(known);
}

Status GetFileSize(const std::string& path, std::uint64_t& size) {
    WIN32_FILE_ATTRIBUTE_DATA data;
    std::wstring wide;
    if (!WidePath(path, wide)) return Status::kBadPath;
    if (GetFileAttributesExW(wide.c_str(), GetFileExInfoStandard, &data) == 0) return FromLastError();
    size = (std::uint64_t{data.nFileSizeHigh} << 32) | data.nFileSizeLow;
    return Status::kOk;
}

Status TempFolder(std::string& path) {
    wchar_t folder[MAX_PATH];
    const DWORD length = GetTempPathW(MAX_PATH, folder);
    if (length == 0 || length >= MAX_PATH) return Status::kNotFound;
    return ToUtf8(std::wstring_view(folder, length), path) ? Status::kOk : Status::kBadPath;
}

Status CreateTempFile(const std::string& folder, std::string& path) {
    std::wstring wide;
    wchar_t name[MAX_PATH];
    if (!ToWide(folder, wide)) return Status::kBadPath;
    if (GetTempFileNameW(wide.c_str(), L"ZTT", 0, name) == 0) return FromLastError();
    return ToUtf8(name, path) ? Status::kOk : Status::kBadPath;
}

Status OpenTempFile(const std::string& folder, FileHandle& file) {
    file = kNoFile;
    std::string path;
    std::wstring wide;
    const Status created = CreateTempFile(folder, path);
    if (created != Status::kOk) return created;
    if (!WidePath(path, wide)) return Status::kBadPath;
    const HANDLE handle = CreateFileW(wide.c_str(), GENERIC_READ | GENERIC_WRITE | DELETE, FILE_SHARE_DELETE, nullptr,
                                      OPEN_EXISTING, FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        const Status status = FromLastError();
        DeleteFileW(wide.c_str());
        return status;
    }
    file = reinterpret_cast<FileHandle>(handle);
    return Status::kOk;
}

Status OpenFolder(const std::string& path, Folder*& folder) {
    folder = nullptr;
    std::wstring wide;
    if (!WidePath(path, wide)) return Status::kBadPath;
    if (!wide.ends_with(L'\\')) wide += L'\\';
    wide += L'*';
    if (wide.size() >= kLongestPath) return Status::kBadPath;
    auto opened = std::make_unique<Folder>();
    opened->pending = true;
    opened->search = FindFirstFileW(wide.c_str(), &opened->current);
    if (opened->search == INVALID_HANDLE_VALUE) return FromLastError();
    folder = opened.release();
    return Status::kOk;
}

Status NextEntry(Folder* folder, std::string& name, PathKind& kind) {
    do {
        if (!folder->pending && FindNextFileW(folder->search, &folder->current) == 0) return FromLastError();
        folder->pending = false;
        if (!ToUtf8(folder->current.cFileName, name)) return Status::kBadPath;
    } while (name == "." || name == "..");
    kind = KindOf(folder->current.dwFileAttributes);
    return Status::kOk;
}

Status CloseFolder(Folder* folder) {
    const std::unique_ptr<Folder> owned(folder);
    return Check(FindClose(folder->search) != 0);
}

}  // namespace zentor::os
