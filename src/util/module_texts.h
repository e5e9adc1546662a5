// The texts that module files carry, read without running their code. One implementation each in win32/ and posix/;
// without messages or exceptions.
#pragma once

#include <string>
#include <vector>

namespace zentor::os {

// What a file with the ending of a module turned out to be.
enum class ModuleContent {
    kTexts,
    kNone,        // no module, or one without one of the texts
    kDamaged,     // a text is not in the file as a whole, or is longer than 16 MiB
    kUnreadable,  // the file cannot be read now
};

struct ModuleTexts {
    std::vector<std::string> texts;  // in the order of their names
    bool isForThisMachine = true;    // false: the module was built for another kind, and cannot be loaded
};

// A text is the resource of type "txt" with that name, or the section ".zt.txt." + name. `found` is complete with
// kTexts only.
ModuleContent ReadModuleTexts(const std::string& path, const std::vector<std::string>& names, ModuleTexts& found);

}  // namespace zentor::os
