// What is known of a plug-in module before any of its code runs.
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

// A module that was found, with its converters, or with what is wrong with it. One that has both is used: its manifest
// is allowed, but says hardly what its author means.
struct FoundModule {
    std::string path;
    std::size_t folder = 0;  // where it was found: the index of one of the folders
    std::string identifier;
    std::vector<PluginConverter> converters;
    std::uint32_t problemCode = 0;  // 0: none
    std::string problem;
    bool isUnread = false;  // the file cannot be read now, which may be different another time
};

// Reads what the file at the module's path says of itself; false when it is no plug-in module at all. Codes
// ZT_MODULE_LOADING (with the module: it cannot be read, is damaged, or was built for another kind of machine) and
// those of ReadManifest; ZT_MANIFEST_SCHEMA also, with all else read, for a property that is hardly meant.
bool ReadModule(FoundModule& module, const std::string& locale);

}  // namespace ZT_PLUGIN
