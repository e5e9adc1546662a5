// Dynamic modules: loading them, their functions, and where this one is. One implementation each in win32/ and posix/;
// without messages or exceptions.
#pragma once

#include <string>

#include "util/os_file.h"

namespace zentor::os {

// What the names of modules end in, in lower case: ".dll", ".so".
extern const char* const kModuleSuffix;

struct Module;  // one that is loaded

// Loads a module, which runs its initialisation; null when it cannot be loaded: `problem` is then what the system's
// loader says about it, in the user's language, perhaps nothing. The modules that it needs may stand beside it.
Module* LoadModule(const std::string& path, std::string& problem);
// Null when the module exports no such function.
void* FindFunction(Module* module, const char* name);
void UnloadModule(Module* module);

// The file that holds the code of this library.
Status OwnModulePath(std::string& path);

}  // namespace zentor::os
