// Dynamic modules: their embedded texts, their functions, and where this one is. One implementation each in win32/ and
// posix/; without messages or exceptions.
#pragma once

#include <string>

#include "util/os_file.h"

namespace zentor::os {

// What the names of modules end in, in lower case: ".dll", ".so".
extern const char* const kModuleSuffix;

// Reads the text that a module carries under `name`: the resource of type "txt", or the section ".zt.txt." + name. No
// code of the module runs. kNotFound: no such text, or the file is no module of this machine; kFailed: the file cannot
// be read, or the text is longer than 16 MiB.
Status ReadModuleText(const std::string& path, const std::string& name, std::string& text);

struct Module;  // one that is loaded

// Loads a module, which runs its initialisation; null when it cannot be loaded. The modules that it needs may stand
// beside it.
Module* LoadModule(const std::string& path);
// Null when the module exports no such function.
void* FindFunction(Module* module, const char* name);
void UnloadModule(Module* module);

// The file that holds the code of this library.
Status OwnModulePath(std::string& path);

}  // namespace zentor::os
