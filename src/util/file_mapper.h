// A file's bytes, mapped read-only, and read at offsets once the mapping has served.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "util/os_file.h"

namespace zentor {

enum class MapResult { kMapped, kCannotOpen, kSizeUnknown, kEmpty, kCannotMap };

// Holds one file open. While it is mapped, Windows refuses to cut it short; elsewhere a file that another process cuts
// short can end the process on access, so that the mapping is given up as soon as it is no longer needed.
class FileMapper {
public:
    FileMapper() = default;
    ~FileMapper() { Unmap(); }
    FileMapper(const FileMapper&) = delete;
    FileMapper& operator=(const FileMapper&) = delete;

    // Maps the whole of a regular file; on any other result than kMapped nothing is held.
    MapResult Map(const std::string& path);
    void Unmap();

    std::string_view bytes() const { return {start_, start_ == nullptr ? 0 : static_cast<std::size_t>(size_)}; }
    std::uint64_t Size() const { return size_; }

    // The pages before this offset may leave the process's memory; they come back when they are read again.
    void Pass(std::size_t offset) const;
    // Where files that are mapped can be cut short, there are no bytes to look at any more; ReadAt and HasChanged go
    // on.
    void EndMapping();

    // Copies bytes from a place in the file; false when they are not all there.
    bool ReadAt(std::uint64_t offset, char* to, std::size_t count) const;
    // Whether the file has another size, or has been written or otherwise changed, since it was mapped.
    bool HasChanged() const;

private:
    // What the system tells of a file's latest changes.
    using Stamp = std::array<std::int64_t, 5>;

    const char* start_ = nullptr;
    std::uint64_t size_ = 0;
    os::FileHandle file_ = os::kNoFile;
    Stamp stamp_{};
};

}  // namespace zentor
