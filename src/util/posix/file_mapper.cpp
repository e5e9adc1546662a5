#include "util/file_mapper.h"

#include <errno.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>

namespace zentor {

namespace {

using Stamp = std::array<std::int64_t, 5>;

Stamp StampOf(const struct stat& info) {
    return {info.st_size, info.st_mtim.tv_sec, info.st_mtim.tv_nsec, info.st_ctim.tv_sec, info.st_ctim.tv_nsec};
}

int Descriptor(os::FileHandle file) { return static_cast<int>(file); }

}  // namespace

MapResult FileMapper::Map(const std::string& path) {
    Unmap();
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0) return MapResult::kCannotOpen;
    struct stat info;
    MapResult result = MapResult::kMapped;
    if (fstat(descriptor, &info) != 0) {
        result = MapResult::kSizeUnknown;
    } else if (!S_ISREG(info.st_mode)) {
        result = MapResult::kCannotOpen;
    } else if (info.st_size == 0) {
        result = MapResult::kEmpty;
    } else {
        const auto size = static_cast<std::size_t>(info.st_size);
        void* view = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, descriptor, 0);
        if (view == MAP_FAILED) {
            result = MapResult::kCannotMap;
        } else {
            start_ = static_cast<const char*>(view);
            size_ = size;
            file_ = static_cast<os::FileHandle>(descriptor);
            stamp_ = StampOf(info);
            return result;
        }
    }
    close(descriptor);
    return result;
}

void FileMapper::Pass(std::size_t offset) const {
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    if (start_ != nullptr) madvise(const_cast<char*>(start_), offset / page * page, MADV_DONTNEED);
}

void FileMapper::EndMapping() {
    if (start_ != nullptr) munmap(const_cast<char*>(start_), size_);
    start_ = nullptr;
}

bool FileMapper::ReadAt(std::uint64_t offset, char* to, std::size_t count) const {
    constexpr std::size_t kMostAtOnce = std::size_t{1} << 30;
    if (offset > size_ || count > size_ - offset) return false;
    while (count != 0) {
        const ssize_t done = pread(Descriptor(file_), to, std::min(count, kMostAtOnce), static_cast<off_t>(offset));
        if (done < 0 && errno == EINTR) continue;
        if (done <= 0) return false;
        to += done;
        offset += static_cast<std::uint64_t>(done);
        count -= static_cast<std::size_t>(done);
    }
    return true;
}

bool FileMapper::HasChanged() const {
    struct stat info;
    return file_ != os::kNoFile && (fstat(Descriptor(file_), &info) != 0 || StampOf(info) != stamp_);
}

void FileMapper::Unmap() {
    EndMapping();
    if (file_ != os::kNoFile) close(Descriptor(file_));
    size_ = 0;
    file_ = os::kNoFile;
}

}  // namespace zentor
