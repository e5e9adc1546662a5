// Finds the files that may be plug-in modules.
#pragma once

#include <functional>
#include <set>
#include <string>
#include <vector>

#include "errors/exception.h"
#include "util/os_file.h"

namespace ZT_PLUGIN {

// A folder that could not be looked into, as a whole or in part.
struct FolderProblem {
    std::string path;
    ns_sensor::ZT_Exception failure;
};

// Goes through folders. A folder that links lead to again is visited once, whoever asks for it.
class ModuleFinder {
public:
    // The files whose names are those of modules, in a folder and the folders in it, up to eight deep; by ascending
    // path. Names that begin with a dot are nobody's plug-ins. A folder that is not there holds nothing; what fails is
    // added to `problems`: ZT_PATH_CONVERSION, ZT_FOLDER_OPEN.
    std::vector<std::string> Find(const std::string& folder, std::vector<FolderProblem>& problems);

private:
    bool IsNew(const std::string& folder);
    void List(const std::string& folder, std::vector<std::string>& modules, std::vector<std::string>& folders);

    std::set<zentor::os::FileIdentity> visited_;
};

}  // namespace ZT_PLUGIN
