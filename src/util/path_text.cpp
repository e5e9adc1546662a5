#include "util/path_text.h"

#include <algorithm>

#include "util/os_file.h"

namespace zentor {

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
