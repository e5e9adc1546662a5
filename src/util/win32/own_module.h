// The module that holds the code of this library.
#pragma once

#include <windows.h>

namespace zentor::os {

// By the address of this function; its reference count stays as it is.
inline HMODULE OwnModule() {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(&OwnModule), &module);
    return module;
}

}  // namespace zentor::os
