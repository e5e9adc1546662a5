#include "conversion/plugin/plugin_host.h"

#include <mutex>
#include <utility>

#include "errors/last_exception.h"
#include "errors/locale.h"
#include "util/module.h"

namespace zentor {

namespace {

std::mutex pluginsMutex;

// Never destroyed: when a process ends without destroying its managers, the modules may have ended before the library.
std::shared_ptr<ZT_PLUGIN::ZT_ConverterHandler>& Registry() {
    static auto* const registry = new std::shared_ptr<ZT_PLUGIN::ZT_ConverterHandler>;
    return *registry;
}

// Empty when the library cannot tell where it is.
std::string PluginFolder() {
    std::string path;
    if (os::OwnModulePath(path) != os::Status::kOk) return {};
    return path.substr(0, path.find_last_of(os::kPathSeparators) + 1) + "zentor-plugins";
}

}  // namespace

std::shared_ptr<ZT_PLUGIN::ZT_ConverterHandler> Plugins() {
    const std::lock_guard lock(pluginsMutex);
    auto& registry = Registry();
    if (!registry) registry = std::make_shared<ZT_PLUGIN::ZT_ConverterHandler>(PluginFolder(), Locale());
    return registry;
}

void UnloadPlugins() {
    std::shared_ptr<ZT_PLUGIN::ZT_ConverterHandler> last;
    {
        const std::lock_guard lock(pluginsMutex);
        last = std::exchange(Registry(), nullptr);
    }
    if (last) last->Unload();
}

void ForgetPlugins() noexcept {
    const auto lastException = GetLastException();
    try {
        UnloadPlugins();
    } catch (...) {
        RestoreLastException(lastException);
    }
}

}  // namespace zentor
