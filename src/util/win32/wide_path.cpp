#include "util/win32/wide_path.h"

#include <windows.h>

#include "util/long_path.h"

namespace zentor::os {

bool ToWide(std::string_view text, std::wstring& wide) {
    wide.clear();
    if (text.empty()) return true;
    const int length = static_cast<int>(text.size());
    const int needed = MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text.data(), length, nullptr, 0);
    if (needed <= 0) return false;
    wide.resize(static_cast<std::size_t>(needed));
    return MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text.data(), length, wide.data(), needed) == needed;
}

bool ToUtf8(std::wstring_view wide, std::string& text) {
    text.clear();
    if (wide.empty()) return true;
    const int length = static_cast<int>(wide.size());
    const int needed =
        WideCharToMultiByte(CP_UTF8, WC_ERR_INVALID_CHARS, wide.data(), length, nullptr, 0, nullptr, nullptr);
    if (needed <= 0) return false;
    text.resize(static_cast<std::size_t>(needed));
    return WideCharToMultiByte(CP_UTF8, WC_ERR_INVALID_CHARS, wide.data(), length, text.data(), needed, nullptr,
                               nullptr) == needed;
}

namespace {

// A path without a name in it, which is all that the system is asked for: names might be those of devices.
std::string CurrentFolder(const std::string& drive) {
    std::wstring asked;
    std::wstring folder;
    std::string narrow;
    if (!ToWide(drive + ".", asked)) return {};
    const DWORD needed = GetFullPathNameW(asked.c_str(), 0, nullptr, nullptr);
    folder.resize(needed);
    const DWORD length = GetFullPathNameW(asked.c_str(), needed, folder.data(), nullptr);
    if (length >= needed) return {};  // none is 0 for both
    folder.resize(length);
    return ToUtf8(folder, narrow) ? narrow : std::string();
}

bool ToWidePath(const std::string& path, std::wstring& wide) {
    return !path.empty() && ToWide(path, wide) && wide.size() < kLongestPath;
}

}  // namespace

bool FullPath(const std::string& path, std::wstring& full) {
    return ToWidePath(AbsoluteWindowsPath(path, &CurrentFolder), full);
}

bool WidePath(const std::string& path, std::wstring& wide) {
    const std::string full = AbsoluteWindowsPath(path, &CurrentFolder);
    return !full.empty() && ToWidePath(LongPathForm(full), wide);
}

}  // namespace zentor::os
