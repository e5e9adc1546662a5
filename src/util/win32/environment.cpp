#include "util/environment.h"

#include <windows.h>

#include "util/win32/wide_path.h"

namespace zentor::os {

const char kPathListSeparator = ';';

namespace {

bool IsSeparator(char c) { return c == '\\' || c == '/'; }

bool IsLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

}  // namespace

std::string EnvironmentText(const char* name) {
    std::wstring wideName;
    std::wstring value;
    std::string text;
    if (!ToWide(name, wideName)) return text;
    DWORD length = GetEnvironmentVariableW(wideName.c_str(), nullptr, 0);
    while (length > value.size()) {  // another thread may make it longer in between
        value.resize(length);
        length = GetEnvironmentVariableW(wideName.c_str(), value.data(), length);
    }
    value.resize(length);
    if (!ToUtf8(value, text)) text.clear();
    return text;
}

bool IsAbsolutePath(const std::string& path) {
    if (path.size() < 3) return false;
    const bool isShare = IsSeparator(path[0]) && IsSeparator(path[1]);  // also a path with a prefix
    return isShare || (IsLetter(path[0]) && path[1] == ':' && IsSeparator(path[2]));
}

}  // namespace zentor::os
