// The plug-in modules that there are, and what they offer.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "conversion/plugin/manifest.h"
#include "conversion/plugin/plugin_module.h"

namespace ZT_PLUGIN {

// A converter of a module.
struct PluginConverter {
    std::shared_ptr<ZT_Module> module;
    zentor::ConverterManifest manifest;
};

// A module that was found, with its converters, or with what is wrong with it.
struct FoundModule {
    std::string path;
    std::string identifier;
    std::vector<PluginConverter> converters;
    std::uint32_t problemCode = 0;  // 0: none
    std::string problem;
};

class ZT_ConverterHandler {
public:
    // Reads the manifests of the modules in a folder and the folders in it, by ascending path; no code of a module
    // runs. A folder that is not there is an empty one; what is no module is passed over; a module that cannot be used
    // is kept with its problem. The calling thread's last exception stays as it is.
    ZT_ConverterHandler(std::string folder, const std::string& locale);
    ZT_ConverterHandler(const ZT_ConverterHandler&) = delete;
    ZT_ConverterHandler& operator=(const ZT_ConverterHandler&) = delete;

    const std::string& Folder() const { return folder_; }
    const std::vector<FoundModule>& Modules() const { return modules_; }

    // The first converter that accepts an input, or null: its manifest does, and so does its module's CheckFileFormat.
    // `extension` is in lower case. Forced converters accept by everything that their manifests state, others by
    // extension or signature. A module that fails is passed over, and the failure is raised when no other accepts: code
    // 1021, 1500, or what CheckFileFormat reported. Codes of File_IO when the input cannot be read.
    const PluginConverter* FindForced(const std::string& inputPath, const std::string& extension);
    const PluginConverter* FindOther(const std::string& inputPath, const std::string& extension);

    // Unloads all modules; afterwards raises the first failure of a module.
    void Unload();

private:
    template <class Accepts>
    const PluginConverter* Find(const std::string& inputPath, Accepts&& accepts);

    std::string folder_;
    std::vector<FoundModule> modules_;
};

}  // namespace ZT_PLUGIN
