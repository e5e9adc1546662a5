#include "util/module_texts.h"

#include <windows.h>

#include <algorithm>

#include "util/os_file.h"
#include "util/win32/own_module.h"
#include "util/win32/wide_path.h"

namespace zentor::os {

namespace {

constexpr DWORD kLongestText = 16 << 20;

// A module of which only the resources are there.
class ResourceImage {
public:
    explicit ResourceImage(const std::wstring& path)
        : module_(LoadLibraryExW(path.c_str(), nullptr, LOAD_LIBRARY_AS_IMAGE_RESOURCE | LOAD_LIBRARY_AS_DATAFILE)) {
        // Not all systems make an image of a module for another kind of machine.
        if (module_ == nullptr) module_ = LoadLibraryExW(path.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    }
    ~ResourceImage() {
        if (module_ != nullptr) FreeLibrary(module_);
    }
    ResourceImage(const ResourceImage&) = delete;
    ResourceImage& operator=(const ResourceImage&) = delete;

    HMODULE get() const { return module_; }

private:
    HMODULE module_;
};

// The kind of machine that a module was built for, from the headers that the system has checked.
WORD MachineOf(HMODULE module) {
    // The lowest bits of a handle say in which way it was loaded.
    const auto begin = reinterpret_cast<std::uintptr_t>(module) & ~std::uintptr_t{3};
    const auto* const header = reinterpret_cast<const IMAGE_DOS_HEADER*>(begin);
    return reinterpret_cast<const IMAGE_NT_HEADERS*>(begin + static_cast<std::uintptr_t>(header->e_lfanew))
        ->FileHeader.Machine;
}

// Why an image cannot be had: because it is none, or because nobody can have it now.
ModuleContent WhyNoImage(const std::string& path, DWORD error) {
    switch (error) {
        case ERROR_NOT_ENOUGH_MEMORY:
        case ERROR_OUTOFMEMORY:
        case ERROR_NO_SYSTEM_RESOURCES:
        case ERROR_COMMITMENT_LIMIT:
        case ERROR_TOO_MANY_OPEN_FILES:
            return ModuleContent::kUnreadable;
        default:
            break;
    }
    FileHandle file = kNoFile;
    if (OpenFile(path, true, Access::kRead, file) != Status::kOk) return ModuleContent::kUnreadable;
    CloseFile(file);
    return ModuleContent::kNone;
}

ModuleContent ReadText(HMODULE module, const std::string& name, std::string& text) {
    std::wstring wideName;
    if (!ToWide(name, wideName)) return ModuleContent::kNone;
    const HRSRC resource = FindResourceW(module, wideName.c_str(), L"txt");
    if (resource == nullptr) return ModuleContent::kNone;
    const DWORD size = SizeofResource(module, resource);
    const HGLOBAL loaded = LoadResource(module, resource);
    const void* const bytes = loaded == nullptr ? nullptr : LockResource(loaded);
    if (bytes == nullptr || size > kLongestText) return ModuleContent::kDamaged;
    text.assign(static_cast<const char*>(bytes), size);
    return ModuleContent::kTexts;
}

}  // namespace

ModuleContent ReadModuleTexts(const std::string& path, const std::vector<std::string>& names, ModuleTexts& found) {
    found = {};
    std::wstring wide;
    if (!FullPath(path, wide)) return ModuleContent::kUnreadable;
    const ResourceImage image(wide);
    if (image.get() == nullptr) return WhyNoImage(path, GetLastError());
    found.isForThisMachine = MachineOf(image.get()) == MachineOf(OwnModule());
    ModuleContent content = ModuleContent::kTexts;
    for (const std::string& name : names) {
        content = std::max(content, ReadText(image.get(), name, found.texts.emplace_back()));
    }
    return content;
}

}  // namespace zentor::os
