// The plug-in modules that there are, and what they offer.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "conversion/plugin/found_module.h"
#include "conversion/plugin/module_finder.h"
#include "errors/first_failure.h"

namespace ZT_PLUGIN {

// A folder where modules were looked for.
struct SearchedFolder {
    std::string path;
    std::vector<FolderProblem> problems;
};

class ZT_ConverterHandler {
public:
    // Reads the manifests of the modules in folders and the folders in them: by the order of the folders, then by
    // ascending path; no code of a module runs. A folder that is not there is an empty one, and one whose path is not
    // absolute a problem; what is no module is passed over; a module that cannot be used is kept with its problem. The
    // calling thread's last exception stays as it is.
    ZT_ConverterHandler(const std::vector<std::string>& folders, std::string locale);
    ZT_ConverterHandler(const ZT_ConverterHandler&) = delete;
    ZT_ConverterHandler& operator=(const ZT_ConverterHandler&) = delete;

    const std::vector<SearchedFolder>& Folders() const { return folders_; }
    const std::vector<FoundModule>& Modules() const { return modules_; }

    // False when a folder or a file could not be read, so that there may be modules that are not known.
    bool HasSeenAll() const { return hasSeenAll_; }
    // Raises what has failed then: ZT_PATH_CONVERSION, ZT_FOLDER_OPEN, ZT_MODULE_LOADING with the module.
    void RaiseUnseen() const { unseen_.RaiseIfAny(); }
    // The same folders looked through again. The modules that have been read are shared with this one.
    std::shared_ptr<ZT_ConverterHandler> LookAgain() const;

    // The first converter that accepts an input, or null: its manifest does, and so does its module's CheckFileFormat.
    // `extension` is in lower case. Forced converters accept by everything that their manifests state, others by
    // extension or signature. What fails is passed over and kept in `failure`: ZT_MODULE_LOADING with the module,
    // ZT_PLUGIN_INITIALIZE, what CheckFileFormat reported, and those of File_IO when the input cannot be read.
    const PluginConverter* FindForced(const std::string& inputPath, const std::string& extension,
                                      zentor::FirstFailure& failure) const;
    const PluginConverter* FindOther(const std::string& inputPath, const std::string& extension,
                                     zentor::FirstFailure& failure) const;

    // The first converter with this identifier, or this last part of one; its module is loaded. Null when there is
    // none. Codes ZT_MODULE_LOADING, ZT_PLUGIN_INITIALIZE.
    const PluginConverter* FindCalled(std::string_view name) const;

    // Unloads all modules, whatever they say to that; afterwards raises the first failure of a module.
    void Unload();

private:
    void Look();
    void LookInto(std::size_t folder, ModuleFinder& finder);
    void AddModule(const std::string& path, std::size_t folder);
    void KeepUnseen(const ns_sensor::ZT_Exception& failure);
    template <class Accepts>
    const PluginConverter* Find(const std::string& inputPath, zentor::FirstFailure& failure, Accepts&& accepts) const;

    std::string locale_;
    std::vector<SearchedFolder> folders_;
    std::vector<FoundModule> modules_;
    bool hasSeenAll_ = true;
    zentor::FirstFailure unseen_;
};

}  // namespace ZT_PLUGIN
