// UTF-8 paths in the form that the wide Windows functions take.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace zentor::os {

// Strict conversions; false when the text is not valid Unicode.
bool ToWide(std::string_view text, std::wstring& wide);
bool ToUtf8(std::wstring_view wide, std::string& text);

// What the system takes of a path, in units, with the zero at the end.
inline constexpr std::size_t kLongestPath = 32767;

// The absolute, prefixed form of a path; false when the path is empty or cannot be converted, or when the form is
// longer than that.
bool WidePath(const std::string& path, std::wstring& wide);
// The absolute form without a prefix, of the same length at most.
bool FullPath(const std::string& path, std::wstring& full);

}  // namespace zentor::os
