#include "files/path_check.h"

#include <cstddef>
#include <cstring>

#include "errors/raise.h"

namespace zentor {

void CheckPath(const char* path) {
    constexpr std::size_t kLimit = 65535;
    if (path == nullptr || *path == '\0') Raise(kInvalidFilePath);
    if (std::memchr(path, '\0', kLimit) == nullptr) Raise(kFilePathTooLarge);
}

}  // namespace zentor
