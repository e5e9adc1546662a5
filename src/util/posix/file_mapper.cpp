#include "util/file_mapper.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zentor {

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
            return result;
        }
    }
    close(descriptor);
    return result;
}

bool FileMapper::HasShrunk() const {
    struct stat info;
    if (file_ == os::kNoFile || fstat(static_cast<int>(file_), &info) != 0) return false;
    return static_cast<std::uint64_t>(info.st_size) < size_;
}

void FileMapper::Unmap() {
    if (start_ != nullptr) {
        munmap(const_cast<char*>(start_), size_);
        close(static_cast<int>(file_));
    }
    start_ = nullptr;
    size_ = 0;
    file_ = os::kNoFile;
}

}  // namespace zentor
