#include "util/console.h"

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <shellapi.h>

#include <cstdio>
#include <cstdlib>

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

// A code page shows only what it has, and what is written piece by piece can be cut within a character.
void WriteError(const std::string& text) {
    std::wstring wide;
    if (!IsErrorTerminal() || !ToWide(text, wide)) {
        std::fputs(text.c_str(), stderr);
        return;
    }
    std::fflush(stderr);
    DWORD written = 0;
    WriteConsoleW(GetStdHandle(STD_ERROR_HANDLE), wide.data(), static_cast<DWORD>(wide.size()), &written, nullptr);
}

// The code page is the console's and outlives the process, so it is put back.
void SetUtf8Output() {
    static const UINT before = GetConsoleOutputCP();
    if (before == 0) return;  // no console
    SetConsoleOutputCP(CP_UTF8);
    std::atexit([] {
        std::fflush(stdout);
        SetConsoleOutputCP(before);
    });
}

void IgnoreBrokenPipes() {}  // they fail anyway

void SetBinaryOutput() { _setmode(_fileno(stdout), _O_BINARY); }

}  // namespace zentor::os
