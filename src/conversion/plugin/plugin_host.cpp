#include "conversion/plugin/plugin_host.h"

#include <mutex>

#include "errors/locale.h"
#include "util/module.h"

namespace zentor {

namespace {

std::mutex pluginsMutex;
std::shared_ptr<ZT_PLUGIN::ZT_ConverterHandler> plugins;

// Empty when the library cannot tell where it is.
std::string PluginFolder() {
    std::string path;
    if (os::OwnModulePath(path) != os::Status::kOk) return {};
    return path.substr(0, path.find_last_of(os::kPathSeparators) + 1) + "zentor-plugins";
}

}  // namespace

std::shared_ptr<ZT_PLUGIN::ZT_ConverterHandler> Plugins() {
    const std::lock_guard lock(pluginsMutex);
    if (!plugins) plugins = std::make_shared<ZT_PLUGIN::ZT_ConverterHandler>(PluginFolder(), Locale());
    return plugins;
}

void UnloadPlugins() {
    std::shared_ptr<ZT_PLUGIN::ZT_ConverterHandler> last;
    {
        const std::lock_guard lock(pluginsMutex);
        last = std::move(plugins);
        plugins = nullptr;
    }
    if (last) last->Unload();
}

}  // namespace zentor
