#include "util/win32/wide_path.h"

#include <windows.h>

#include <algorithm>

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

bool FullPath(const std::string& path, std::wstring& full) {
    std::wstring wide;
    if (path.empty() || !ToWide(path, wide)) return false;
    std::replace(wide.begin(), wide.end(), L'/', L'\\');
    full = wide;
    if (wide.starts_with(L"\\\\?\\")) return true;
    const DWORD needed = GetFullPathNameW(wide.c_str(), 0, nullptr, nullptr);
    if (needed == 0) return false;
    full.resize(needed);
    const DWORD length = GetFullPathNameW(wide.c_str(), needed, full.data(), nullptr);
    full.resize(std::min(length, needed));
    return length != 0 && length < needed;
}

bool WidePath(const std::string& path, std::wstring& wide) {
    std::wstring full;
    std::string narrow;
    return FullPath(path, full) && ToUtf8(full, narrow) && ToWide(LongPathForm(std::move(narrow)), wide);
}

}  // namespace zentor::os
