#include "util/long_path.h"

#include <algorithm>

namespace zentor {

std::string LongPathForm(std::string path) {
    std::replace(path.begin(), path.end(), '/', '\\');
    if (path.starts_with("\\\\?\\") || path.starts_with("\\\\.\\")) return path;
    if (path.starts_with("\\\\")) return "\\\\?\\UNC\\" + path.substr(2);
    return "\\\\?\\" + path;
}

}  // namespace zentor
