#include "util/console.h"

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <shellapi.h>

#include <cstdio>

#include "util/win32/wide_path.h"

namespace zentor::os {

// The narrow arguments are in the code page of the system, which does not hold every name.
std::vector<std::string> Arguments(int, char**) {
    std::vector<std::string> arguments;
    int count = 0;
    wchar_t** const wide = CommandLineToArgvW(GetCommandLineW(), &count);
    for (int k = 1; wide != nullptr && k < count; ++k) {
        std::string text;
        ToUtf8(wide[k], text);
        arguments.push_back(std::move(text));
    }
    LocalFree(wide);
    return arguments;
}

bool IsErrorTerminal() { return _isatty(_fileno(stderr)) != 0; }

void IgnoreBrokenPipes() {}  // they fail anyway

void SetBinaryOutput() { _setmode(_fileno(stdout), _O_BINARY); }

}  // namespace zentor::os
