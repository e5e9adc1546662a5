#include "util/long_path.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace zentor {

namespace {

constexpr std::string_view kPrefix = R"(\\?\)";
constexpr std::string_view kNetworkPrefix = R"(\\?\UNC\)";
constexpr std::string_view kDevicePrefix = R"(\\.\)";
constexpr std::string_view kNetworkStart = R"(\\)";

bool IsDrive(std::string_view path) {
    const auto isLetter = [](char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); };
    return path.size() >= 2 && isLetter(path[0]) && path[1] == ':';
}

bool IsComplete(std::string_view path) { return path.starts_with(kPrefix) || path.starts_with(kDevicePrefix); }

// How long the part of an absolute path is that nothing leads out of: a drive with its separator, or a share.
std::size_t RootLength(std::string_view path) {
    const auto endOfName = [path](std::size_t from) { return std::min(path.find('\\', from), path.size()); };
    const auto endOfShare = [&](std::size_t server) {
        const std::size_t end = endOfName(server);
        return end == path.size() ? end : endOfName(end + 1);
    };
    if (path.starts_with(kNetworkPrefix)) return endOfShare(kNetworkPrefix.size());
    if (path.starts_with(kPrefix)) return std::min(endOfName(kPrefix.size()) + 1, path.size());
    if (path.starts_with(kNetworkStart)) return endOfShare(kNetworkStart.size());
    return std::min<std::size_t>(3, path.size());
}

// An absolute path without empty names, "." and "..".
std::string Resolved(std::string_view path) {
    std::string resolved(path.substr(0, RootLength(path)));
    std::vector<std::size_t> ends;  // of what is there, before each name
    for (std::size_t at = resolved.size(); at < path.size();) {
        const std::size_t end = std::min(path.find('\\', at), path.size());
        const std::string_view name = path.substr(at, end - at);
        at = end + 1;
        if (name.empty() || name == ".") continue;
        if (name == "..") {
            if (ends.empty()) continue;
            resolved.resize(ends.back());
            ends.pop_back();
            continue;
        }
        ends.push_back(resolved.size());
        if (!resolved.ends_with('\\')) resolved += '\\';
        resolved += name;
    }
    if (path.ends_with('\\') && !resolved.ends_with('\\')) resolved += '\\';
    return resolved;
}

void UseBackslashes(std::string& path) { std::replace(path.begin(), path.end(), '/', '\\'); }

}  // namespace

std::string AbsoluteWindowsPath(std::string path, const CurrentFolder& currentFolder) {
    UseBackslashes(path);
    if (path.empty() || IsComplete(path)) return path;
    const bool hasDrive = IsDrive(path);
    if (path.starts_with(kNetworkStart) || (hasDrive && path.substr(2, 1) == "\\")) return Resolved(path);
    const std::string folder = currentFolder(hasDrive ? path.substr(0, 2) : std::string());
    if (folder.empty()) return {};
    const bool isRooted = path.front() == '\\';
    const std::string_view from = isRooted ? std::string_view(folder).substr(0, RootLength(folder)) : folder;
    const std::string rest = path.substr(hasDrive ? 2 : 0);
    return Resolved(rest.empty() ? folder : std::string(from) + '\\' + rest);
}

std::string LongPathForm(std::string path) {
    UseBackslashes(path);
    if (IsComplete(path)) return path;
    if (path.starts_with(kNetworkStart)) return std::string(kNetworkPrefix) + path.substr(kNetworkStart.size());
    return std::string(kPrefix) + path;
}

}  // namespace zentor
