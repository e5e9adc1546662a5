#include "conversion/input_checks.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "errors/raise.h"
#include "format/version.h"
#include "util/file_mapper.h"
#include "util/os_file.h"

namespace zentor {

namespace {

constexpr std::size_t kPathLimit = 65535;

}  // namespace

void CheckInputFilePath(const char* path) {
    if (path == nullptr || *path == '\0') Raise(kInvalidFilePath);
    if (std::memchr(path, '\0', kPathLimit) == nullptr) Raise(kFilePathTooLarge);
}

bool IsVkjsonDocument(const std::string& path) noexcept {
    try {
        FileMapper file;
        if (file.Map(path) != MapResult::kMapped) return false;
        return BeginsAsVersion2(file.bytes(), LetterCase::kAny);
    } catch (...) {
        return false;
    }
}

std::string ExtensionOf(const std::string& path) {
    const std::size_t name = path.find_last_of(os::kPathSeparators) + 1;
    const std::size_t dot = path.rfind('.');
    return dot == std::string::npos || dot < name ? std::string() : path.substr(dot + 1);
}

std::string LowerCaseAscii(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return text;
}

}  // namespace zentor
