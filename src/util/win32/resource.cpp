#include "util/resource.h"

#include <windows.h>

#include "util/win32/own_module.h"
#include "util/win32/wide_path.h"

namespace zentor::os {

std::string_view FindOwnResource(std::string_view type, std::string_view name) {
    std::wstring wideType;
    std::wstring wideName;
    if (!ToWide(type, wideType) || !ToWide(name, wideName)) return {};
    const HMODULE module = OwnModule();
    const HRSRC resource = FindResourceW(module, wideName.c_str(), wideType.c_str());
    const HGLOBAL loaded = resource == nullptr ? nullptr : LoadResource(module, resource);
    const void* const bytes = loaded == nullptr ? nullptr : LockResource(loaded);
    if (bytes == nullptr) return {};
    return {static_cast<const char*>(bytes), SizeofResource(module, resource)};
}

}  // namespace zentor::os
