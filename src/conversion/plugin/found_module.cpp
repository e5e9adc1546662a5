#include "conversion/plugin/found_module.h"

#include <algorithm>
#include <utility>

#include "errors/raise.h"
#include "util/module_texts.h"

namespace ZT_PLUGIN {

using namespace zentor;

namespace {

// A text that a module carries ends where the C text ends that it is handed out as.
std::string UpToZero(std::string text) {
    text.resize(std::min(text.find('\0'), text.size()));
    return text;
}

}  // namespace

bool ReadModule(FoundModule& module, const std::string& locale) {
    os::ModuleTexts read;
    const os::ModuleContent content = os::ReadModuleTexts(module.path, {"ZTPLUGINUIDS", "MODULE_IDENTIFIER"}, read);
    if (content == os::ModuleContent::kNone) return false;
    module.isUnread = content == os::ModuleContent::kUnreadable;
    if (module.isUnread) Raise(kPluginLoadFailure, Quoted(module.path));
    if (content == os::ModuleContent::kDamaged) Raise(kPluginLoadFailure, Quoted(module.path) + ", damaged,");
    module.identifier = UpToZero(std::move(read.texts[1]));
    if (!read.isForThisMachine) {
        Raise(kPluginLoadFailure, Quoted(module.path) + ", built for another kind of machine,");
    }
    const auto loadable = std::make_shared<ZT_Module>(module.path, module.identifier);
    std::string doubtful;
    for (ConverterManifest& converter : ReadManifest(read.texts[0], locale)) {
        if (doubtful.empty()) doubtful = converter.doubtfulProperty;
        module.converters.push_back({loadable, std::move(converter)});
    }
    if (!doubtful.empty()) Raise(kSchemaViolation, doubtful);
    return true;
}

}  // namespace ZT_PLUGIN
