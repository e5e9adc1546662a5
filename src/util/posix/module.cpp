#include "util/module.h"

#include <dlfcn.h>

namespace zentor::os {

const char* const kModuleSuffix = ".so";

Module* LoadModule(const std::string& path, std::string& problem) {
    void* const module = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (module == nullptr) {
        const char* const text = dlerror();
        problem = text == nullptr ? "" : text;
    }
    return static_cast<Module*>(module);
}

void* FindFunction(Module* module, const char* name) { return dlsym(module, name); }

void UnloadModule(Module* module) { dlclose(module); }

Status OwnModulePath(std::string& path) {
    Dl_info info;
    if (dladdr(reinterpret_cast<const void*>(&OwnModulePath), &info) == 0 || info.dli_fname == nullptr) {
        return Status::kFailed;
    }
    std::string absolute;
    const Status status = AbsolutePath(info.dli_fname, absolute);
    return status == Status::kOk ? ResolveLinks(absolute, path) : status;
}

}  // namespace zentor::os
