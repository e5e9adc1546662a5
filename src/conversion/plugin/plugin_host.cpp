#include "conversion/plugin/plugin_host.h"

#include <mutex>
#include <utility>

#include "conversion/plugin/search_path.h"
#include "errors/last_exception.h"
#include "errors/locale.h"

namespace zentor {

namespace {

std::mutex pluginsMutex;

// Never destroyed: when a process ends without destroying its managers, the modules may have ended before the library.
std::shared_ptr<ZT_PLUGIN::ZT_ConverterHandler>& Registry() {
    static auto* const registry = new std::shared_ptr<ZT_PLUGIN::ZT_ConverterHandler>;
    return *registry;
}

}  // namespace

std::shared_ptr<ZT_PLUGIN::ZT_ConverterHandler> Plugins() {
    const std::lock_guard lock(pluginsMutex);
    auto& registry = Registry();
    if (!registry) {
        registry = std::make_shared<ZT_PLUGIN::ZT_ConverterHandler>(ZT_PLUGIN::SearchPath(), Locale());
    } else if (!registry->HasSeenAll()) {
        registry = registry->LookAgain();
    }
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
    const LastExceptionScope lastException;
    try {
        UnloadPlugins();
    } catch (...) {
        // Nobody has asked for it.
    }
}

}  // namespace zentor
