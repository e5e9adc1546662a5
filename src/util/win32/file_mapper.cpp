#include "util/file_mapper.h"

#include <windows.h>

#include <cstring>

#include "util/win32/wide_path.h"

namespace zentor {

namespace {

// An open that leaves an error behind counts as failed, even with a handle.
HANDLE OpenForMapping(const std::string& path) {
    std::wstring wide;
    if (!os::WidePath(path, wide)) return INVALID_HANDLE_VALUE;
    SetLastError(ERROR_SUCCESS);
    // It stays open: others may still rename it, as far as its being mapped lets them.
    const HANDLE file = CreateFileW(wide.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                    nullptr, OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr);
    if (file == INVALID_HANDLE_VALUE || GetLastError() == ERROR_SUCCESS) return file;
    CloseHandle(file);
    return INVALID_HANDLE_VALUE;
}

const char* MapWhole(HANDLE file) {
    const HANDLE mapping = CreateFileMappingW(file, nullptr, PAGE_READONLY, 0, 0, nullptr);
    if (mapping == nullptr) return nullptr;
    const void* view = MapViewOfFile(mapping, FILE_MAP_READ, 0, 0, 0);
    CloseHandle(mapping);
    return static_cast<const char*>(view);
}

HANDLE SystemHandle(os::FileHandle file) { return reinterpret_cast<HANDLE>(file); }

// A time that the system does not tell is 0.
std::array<std::int64_t, 5> StampOf(HANDLE file) {
    LARGE_INTEGER size{};
    FILE_BASIC_INFO times{};
    GetFileSizeEx(file, &size);
    GetFileInformationByHandleEx(file, FileBasicInfo, &times, sizeof times);
    return {size.QuadPart, times.LastWriteTime.QuadPart, times.ChangeTime.QuadPart, 0, 0};
}

}  // namespace

MapResult FileMapper::Map(const std::string& path) {
    Unmap();
    const HANDLE file = OpenForMapping(path);
    if (file == INVALID_HANDLE_VALUE) return MapResult::kCannotOpen;
    LARGE_INTEGER size;
    MapResult result = MapResult::kMapped;
    if (GetFileSizeEx(file, &size) == 0) {
        result = MapResult::kSizeUnknown;
    } else if (size.QuadPart == 0) {
        result = MapResult::kEmpty;
    } else if ((start_ = MapWhole(file)) == nullptr) {
        result = MapResult::kCannotMap;
    } else {
        size_ = static_cast<std::uint64_t>(size.QuadPart);
        file_ = reinterpret_cast<os::FileHandle>(file);
        stamp_ = StampOf(file);
        return result;
    }
    CloseHandle(file);
    return result;
}

void FileMapper::Pass(std::size_t offset) const {
    // What is not locked leaves the working set, and the call says that it was not locked.
    if (start_ != nullptr) VirtualUnlock(const_cast<char*>(start_), offset);
}

// The view keeps the file as long as it is.
void FileMapper::EndMapping() {}

bool FileMapper::ReadAt(std::uint64_t offset, char* to, std::size_t count) const {
    if (offset > size_ || count > size_ - offset) return false;
    std::memcpy(to, start_ + offset, count);
    return true;
}

bool FileMapper::HasChanged() const { return file_ != os::kNoFile && StampOf(SystemHandle(file_)) != stamp_; }

void FileMapper::Unmap() {
    if (start_ != nullptr) UnmapViewOfFile(start_);
    if (file_ != os::kNoFile) CloseHandle(SystemHandle(file_));
    start_ = nullptr;
    size_ = 0;
    file_ = os::kNoFile;
}

}  // namespace zentor
