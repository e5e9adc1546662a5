// One plug-in module.
#pragma once

#include <exception>
#include <memory>
#include <mutex>
#include <string>

#include "errors/trace.h"
#include "model/include/plugin.h"
#include "util/module.h"
#include "zentor/error_codes.h"

namespace ZT_PLUGIN {

// Known, loaded, and unloaded again. Thread-safe.
class ZT_Module {
public:
    // `identifier`: the text that the module carries.
    ZT_Module(std::string path, std::string identifier) : path_(std::move(path)), identifier_(std::move(identifier)) {}
    ~ZT_Module();
    ZT_Module(const ZT_Module&) = delete;
    ZT_Module& operator=(const ZT_Module&) = delete;

    const std::string& Path() const { return path_; }
    const std::string& Identifier() const { return identifier_; }

    // Loads and initialises the module unless that has been done. Codes ZT_MODULE_LOADING (it cannot be loaded, or has
    // no InitializePlugin), ZT_PLUGIN_INITIALIZE (it reports a failure, with its details, or leaves a table that cannot
    // be used). With a failure `diagnosis` becomes what the module's author has to know: what the system's loader says,
    // or what InitializePlugin has done.
    void Load(std::string& diagnosis);
    // The functions of the loaded module. Code ZT_MODULE_LOADING when it is not loaded.
    const ZT_PluginEntryPoints& EntryPoints() const;
    // Ends and unloads the module if it is loaded, whatever it says to that: a failure of its Terminate is raised
    // afterwards, with the module's code.
    void Unload();

private:
    struct Unloader {
        void operator()(zentor::os::Module* module) const { zentor::os::UnloadModule(module); }
    };
    using Library = std::unique_ptr<zentor::os::Module, Unloader>;

    std::string path_;
    std::string identifier_;
    mutable std::mutex mutex_;
    Library library_;
    std::unique_ptr<ZT_PluginEntryPoints> entryPoints_;
};

// Calls a function of a module with an error record. An exception that leaves it all the same becomes
// ZT_CONVERTER_UNKNOWN.
template <class Call>
ZT_ErrorRecord CallModule(Call&& call) noexcept {
    ZT_ErrorRecord error{0, 0, -1, -1};
    try {
        call(&error);
    } catch (const std::exception& failure) {
        zentor::Trace(failure.what());
        error = {0, ZT_CONVERTER_UNKNOWN, -1, -1};
    } catch (...) {
        error = {0, ZT_CONVERTER_UNKNOWN, -1, -1};
    }
    return error;
}

}  // namespace ZT_PLUGIN
