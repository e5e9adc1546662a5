#include "conversion/plugin/search_path.h"

#include <string_view>
#include <utility>

#include "util/environment.h"
#include "util/module.h"

namespace ZT_PLUGIN {

using namespace zentor;

namespace {

// Empty when the library cannot tell where it is.
std::string OwnFolder() {
    std::string path;
    if (os::OwnModulePath(path) != os::Status::kOk) return {};
    return path.substr(0, path.find_last_of(os::kPathSeparators) + 1) + "zentor-plugins";
}

}  // namespace

std::vector<std::string> SearchPath() {
    const std::string list = os::EnvironmentText(kSearchPathVariable);
    std::vector<std::string> folders;
    for (std::string_view rest = list; !rest.empty();) {
        const std::size_t length = rest.find(os::kPathListSeparator);
        if (length != 0) folders.emplace_back(rest.substr(0, length));
        rest.remove_prefix(length == std::string_view::npos ? rest.size() : length + 1);
    }
    if (std::string own = OwnFolder(); !own.empty()) folders.push_back(std::move(own));
    return folders;
}

}  // namespace ZT_PLUGIN
