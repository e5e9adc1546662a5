#include "conversion/plugin/module_finder.h"

#include <algorithm>
#include <utility>

#include "files/file_io.h"
#include "util/module.h"
#include "util/path_text.h"

namespace ZT_PLUGIN {

using namespace zentor;

namespace {

constexpr int kDeepestFolder = 8;

class FolderCloser {
public:
    explicit FolderCloser(os::Folder* folder) : folder_(folder) {}
    ~FolderCloser() { os::CloseFolder(folder_); }
    FolderCloser(const FolderCloser&) = delete;
    FolderCloser& operator=(const FolderCloser&) = delete;

private:
    os::Folder* folder_;
};

}  // namespace

bool ModuleFinder::IsNew(const std::string& folder) { return visited_.insert(File_IO::FolderIdentity(folder)).second; }

// What is in one folder.
void ModuleFinder::List(const std::string& folder, std::vector<std::string>& modules,
                        std::vector<std::string>& folders) {
    os::Folder* const open = File_IO::OpenFolder(folder);
    const FolderCloser closer(open);
    const std::string_view separators = os::kPathSeparators;
    const std::string parent =
        separators.find(folder.back()) == std::string_view::npos ? folder + separators.back() : folder;
    std::string name;
    PathKind kind = PathKind::kNone;
    while (File_IO::ReadFolder(open, name, kind)) {
        if (name.starts_with('.')) continue;
        std::string path = parent + name;
        if (kind == PathKind::kFolder) {
            folders.push_back(std::move(path));
        } else if (kind == PathKind::kFile && LowerCaseAscii(name).ends_with(os::kModuleSuffix)) {
            modules.push_back(std::move(path));
        }
    }
}

std::vector<std::string> ModuleFinder::Find(const std::string& folder, std::vector<FolderProblem>& problems) {
    std::vector<std::string> modules;
    std::vector<std::string> level;  // the folders of one depth: so each is met at the shortest of its paths
    if (File_IO::GetFileMode(folder) == PathKind::kFolder) level.push_back(folder);
    for (int depth = 0; depth <= kDeepestFolder && !level.empty(); ++depth) {
        std::vector<std::string> deeper;
        std::sort(level.begin(), level.end());
        for (const std::string& path : level) {
            try {
                if (IsNew(path)) List(path, modules, deeper);
            } catch (const ns_sensor::ZT_Exception& failure) {
                problems.push_back({path, failure});
            }
        }
        level = std::move(deeper);
    }
    std::sort(modules.begin(), modules.end());
    return modules;
}

}  // namespace ZT_PLUGIN
