#include "conversion/plugin/plugin_module.h"

#include "conversion/plugin/services.h"
#include "errors/raise.h"

namespace ZT_PLUGIN {

using namespace zentor;

namespace {

constexpr std::uint32_t kTableVersion = 1;
static_assert(sizeof(ZT_PluginEntryPoints) == 48);

bool IsIntact(const ZT_PluginEntryPoints& table) {
    return table.size == sizeof table && table.version == kTableVersion;
}

bool IsUsable(const ZT_ErrorRecord& error, const ZT_PluginEntryPoints& table) {
    return error.code == 0 && IsIntact(table) && table.initializeSession != nullptr && table.convert != nullptr;
}

// Why it is not.
std::string InitializationFault(const ZT_ErrorRecord& error, const ZT_PluginEntryPoints& table) {
    if (error.code != 0) {
        return "InitializePlugin reported code " + std::to_string(error.code) + " with the details " +
               std::to_string(error.extra1) + " and " + std::to_string(error.extra2);
    }
    if (!IsIntact(table)) return "InitializePlugin changed size or version of the table of entry points";
    return std::string("InitializePlugin set no ") +
           (table.initializeSession == nullptr ? "InitializeSession" : "Convert");
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

void ZT_Module::Load(std::string& diagnosis) {
    const std::lock_guard lock(mutex_);
    if (entryPoints_) return;
    Library library(os::LoadModule(path_, diagnosis));
    if (!library) Raise(kModuleLoadingFailed);
    const auto initialize = reinterpret_cast<ZT_InitializePlugin>(os::FindFunction(library.get(), "InitializePlugin"));
    if (initialize == nullptr) {
        diagnosis = "it exports no function InitializePlugin";
        Raise(kModuleLoadingFailed);
    }
    auto table = std::make_unique<ZT_PluginEntryPoints>();
    table->size = sizeof *table;
    table->version = kTableVersion;
    const ZT_ErrorRecord error = CallModule(
        [&](ZT_ErrorRecord* record) { initialize(identifier_.c_str(), &PluginServices(), table.get(), record); });
    const ZT_PluginEntryPoints filled = *table;
    if (!IsUsable(error, filled)) {
        // A module that has come so far has begun; one that has spoilt its table is not called again.
        if (IsIntact(filled)) Terminate(*table);
        diagnosis = InitializationFault(error, filled);
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
