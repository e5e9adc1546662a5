#include "util/file_mapper.h"

#include <windows.h>

#include "util/win32/wide_path.h"

namespace zentor {

namespace {

// An open that leaves an error behind counts as failed, even with a handle.
HANDLE OpenForMapping(const std::string& path) {
    std::wstring wide;
    if (!os::WidePath(path, wide)) return INVALID_HANDLE_VALUE;
    SetLastError(ERROR_SUCCESS);
    const HANDLE file = CreateFileW(wide.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                    OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr);
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
        size_ = static_cast<std::size_t>(size.QuadPart);
    }
    CloseHandle(file);
    return result;
}

bool FileMapper::HasShrunk() const { return false; }

void FileMapper::Unmap() {
    if (start_ != nullptr) UnmapViewOfFile(start_);
    start_ = nullptr;
    size_ = 0;
}

}  // namespace zentor
