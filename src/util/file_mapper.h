// A file's bytes, mapped read-only.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "util/os_file.h"

namespace zentor {

enum class MapResult { kMapped, kCannotOpen, kSizeUnknown, kEmpty, kCannotMap };

// Holds the view of one file; unmaps it at the end. Windows refuses to cut a mapped file short. Elsewhere a file that
// another process cuts short while it is mapped can end the process on access: nobody is to write an input while it is
// read. To notice it at least afterwards, the file stays open there; on Windows it is open only while it is being
// mapped.
class FileMapper {
public:
    FileMapper() = default;
    ~FileMapper() { Unmap(); }
    FileMapper(const FileMapper&) = delete;
    FileMapper& operator=(const FileMapper&) = delete;

    // Maps the whole of a regular file; on any other result than kMapped nothing is held.
    MapResult Map(const std::string& path);
    void Unmap();

    std::string_view bytes() const { return {start_, size_}; }
    // Whether the file has become shorter than the view.
    bool HasShrunk() const;

private:
    const char* start_ = nullptr;
    std::size_t size_ = 0;
    os::FileHandle file_ = os::kNoFile;
};

}  // namespace zentor
