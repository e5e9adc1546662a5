#include "util/module.h"

#include <windows.h>

#include "util/win32/own_module.h"
#include "util/win32/wide_path.h"

namespace zentor::os {

const char* const kModuleSuffix = ".dll";

namespace {

// What the system says to an error of a module, in the user's language; the module takes the place of "%1".
std::string SystemText(DWORD error, const std::string& path) {
    constexpr DWORD kLongest = 1024;
    wchar_t wide[kLongest];
    // Messages may ask for more than there is to give them.
    const DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error, 0,
                                        wide, kLongest, nullptr);
    std::string text;
    if (!ToUtf8(std::wstring_view(wide, length), text)) text.clear();
    text.erase(text.find_last_not_of(" \t\r\n") + 1);
    if (const std::size_t insert = text.find("%1"); insert != std::string::npos) text.replace(insert, 2, path);
    return text.empty() ? "error " + std::to_string(error) : text;
}

}  // namespace

Module* LoadModule(const std::string& path, std::string& problem) {
    std::wstring wide;
    if (!FullPath(path, wide)) return nullptr;
    // Nobody is asked anything when a module of this one's needs is missing.
    DWORD before = 0;
    SetThreadErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX, &before);
    const HMODULE module = LoadLibraryExW(wide.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    const DWORD error = GetLastError();
    SetThreadErrorMode(before, nullptr);
    if (module == nullptr) problem = SystemText(error, path);
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
