#include "util/module.h"

#include <windows.h>

#include "util/win32/own_module.h"
#include "util/win32/wide_path.h"

namespace zentor::os {

const char* const kModuleSuffix = ".dll";

namespace {

constexpr DWORD kLongestText = 16 << 20;

// A module of which only the resources are there.
class ResourceImage {
public:
    explicit ResourceImage(const std::wstring& path)
        : module_(LoadLibraryExW(path.c_str(), nullptr, LOAD_LIBRARY_AS_IMAGE_RESOURCE | LOAD_LIBRARY_AS_DATAFILE)) {}
    ~ResourceImage() {
        if (module_ != nullptr) FreeLibrary(module_);
    }
    ResourceImage(const ResourceImage&) = delete;
    ResourceImage& operator=(const ResourceImage&) = delete;

    HMODULE get() const { return module_; }

private:
    HMODULE module_;
};

}  // namespace

Status ReadModuleText(const std::string& path, const std::string& name, std::string& text) {
    std::wstring wide;
    std::wstring wideName;
    if (!FullPath(path, wide) || !ToWide(name, wideName)) return Status::kBadPath;
    const ResourceImage image(wide);
    if (image.get() == nullptr) return Status::kNotFound;
    const HRSRC resource = FindResourceW(image.get(), wideName.c_str(), L"txt");
    if (resource == nullptr) return Status::kNotFound;
    const DWORD size = SizeofResource(image.get(), resource);
    const HGLOBAL loaded = LoadResource(image.get(), resource);
    const void* const bytes = loaded == nullptr ? nullptr : LockResource(loaded);
    if (bytes == nullptr || size > kLongestText) return Status::kFailed;
    text.assign(static_cast<const char*>(bytes), size);
    return Status::kOk;
}

Module* LoadModule(const std::string& path) {
    std::wstring wide;
    if (!FullPath(path, wide)) return nullptr;
    // Nobody is asked anything when a module of this one's needs is missing.
    DWORD before = 0;
    SetThreadErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX, &before);
    const HMODULE module = LoadLibraryExW(wide.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    SetThreadErrorMode(before, nullptr);
    return reinterpret_cast<Module*>(module);
}

void* FindFunction(Module* module, const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(reinterpret_cast<HMODULE>(module), name));
}

void UnloadModule(Module* module) { FreeLibrary(reinterpret_cast<HMODULE>(module)); }

Status OwnModulePath(std::string& path) {
    std::wstring wide(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(OwnModule(), wide.data(), static_cast<DWORD>(wide.size()));
        if (length == 0) return Status::kFailed;
        if (length < wide.size()) {
            wide.resize(length);
            return ToUtf8(wide, path) ? Status::kOk : Status::kFailed;
        }
        wide.resize(wide.size() * 2);
    }
}

}  // namespace zentor::os
