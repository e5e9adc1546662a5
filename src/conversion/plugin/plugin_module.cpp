#include "conversion/plugin/plugin_module.h"

#include "conversion/plugin/services.h"
#include "errors/raise.h"

namespace ZT_PLUGIN {

using namespace zentor;

namespace {

constexpr std::uint32_t kTableVersion = 1;
static_assert(sizeof(ZT_PluginEntryPoints) == 48);

// What the module has made of the table can be used.
bool IsUsable(const ZT_PluginEntryPoints& table) {
    return table.size == sizeof table && table.version == kTableVersion && table.initializeSession != nullptr &&
           table.convert != nullptr;
}

ZT_ErrorRecord Terminate(const ZT_PluginEntryPoints& table) noexcept {
    return CallModule([&](ZT_ErrorRecord* error) {
        if (table.terminate != nullptr) table.terminate(error);
    });
}

}  // namespace

ZT_Module::~ZT_Module() {
    if (entryPoints_) Terminate(*entryPoints_);
}

void ZT_Module::Load() {
    const std::lock_guard lock(mutex_);
    if (entryPoints_) return;
    Library library(os::LoadModule(path_));
    if (!library) Raise(kModuleLoadingFailed);
    const auto initialize = reinterpret_cast<ZT_InitializePlugin>(os::FindFunction(library.get(), "InitializePlugin"));
    if (initialize == nullptr) Raise(kModuleLoadingFailed);
    auto table = std::make_unique<ZT_PluginEntryPoints>();
    table->size = sizeof *table;
    table->version = kTableVersion;
    const ZT_ErrorRecord error = CallModule(
        [&](ZT_ErrorRecord* record) { initialize(identifier_.c_str(), &PluginServices(), table.get(), record); });
    if (error.code != 0 || !IsUsable(*table)) {
        // A module that has come so far has begun; one that has spoilt its table is not called again.
        if (table->size == sizeof *table && table->version == kTableVersion) Terminate(*table);
        Raise({kPluginInitializeFailed, error.extra1, error.extra2}, identifier_);
    }
    library_ = std::move(library);
    entryPoints_ = std::move(table);
}

const ZT_PluginEntryPoints& ZT_Module::EntryPoints() const {
    const std::lock_guard lock(mutex_);
    if (!entryPoints_) Raise(kPluginLoadFailure, Quoted(path_));
    return *entryPoints_;
}

void ZT_Module::Unload() {
    const std::lock_guard lock(mutex_);
    if (!entryPoints_) return;
    const ZT_ErrorRecord error = Terminate(*entryPoints_);
    entryPoints_.reset();
    library_.reset();
    if (error.code != 0) Raise({error.code, kTerminatePluginFailed, error.extra1, error.extra2}, identifier_);
}

}  // namespace ZT_PLUGIN
