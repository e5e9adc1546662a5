#include "conversion/input_checks.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "errors/raise.h"
#include "util/file_mapper.h"
#include "util/os_file.h"

namespace zentor {

namespace {

constexpr std::size_t kPathLimit = 65535;

void SkipWhiteSpace(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
}

bool Skip(std::string_view& text, char c) {
    SkipWhiteSpace(text);
    if (!text.starts_with(c)) return false;
    text.remove_prefix(1);
    return true;
}

// Takes a string without escapes that is no longer than `expected`.
bool SkipString(std::string_view& text, std::string_view expected) {
    if (!Skip(text, '"') || text.size() <= expected.size() || text[expected.size()] != '"') return false;
    if (LowerCaseAscii(std::string(text.substr(0, expected.size()))) != expected) return false;
    text.remove_prefix(expected.size() + 1);
    return true;
}

}  // namespace

void CheckInputFilePath(const char* path) {
    if (path == nullptr || *path == '\0') Raise(kInvalidFilePath);
    if (std::memchr(path, '\0', kPathLimit) == nullptr) Raise(kFilePathTooLarge);
}

bool IsVkjsonDocument(const std::string& path) noexcept {
    try {
        FileMapper file;
        if (file.Map(path) != MapResult::kMapped) return false;
        std::string_view text = file.bytes();
        if (!Skip(text, '{')) return false;
        SkipWhiteSpace(text);
        return text.starts_with("\"version\"") && SkipString(text, "version") && Skip(text, ':') &&
               SkipString(text, "vkjson2.0.0");
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
