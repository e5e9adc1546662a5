#include "util/environment.h"

#include <cstdlib>

namespace zentor::os {

const char kPathListSeparator = ':';

std::string EnvironmentText(const char* name) {
    const char* const value = secure_getenv(name);
    return value == nullptr ? std::string() : std::string(value);
}

bool IsAbsolutePath(const std::string& path) { return path.starts_with('/'); }

}  // namespace zentor::os
