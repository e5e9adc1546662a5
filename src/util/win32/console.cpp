#include "util/console.h"

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <shellapi.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <memory>
#include <new>

#include "util/utf_codec.h"
#include "util/win32/wide_path.h"

namespace zentor::os {

namespace {

// How many bytes at the end of a text are a character that is not complete yet.
std::size_t IncompleteEnd(std::string_view text) {
    for (std::size_t back = 1; back <= std::min<std::size_t>(3, text.size()); ++back) {
        const auto byte = static_cast<unsigned char>(text[text.size() - back]);
        if ((byte & 0xC0) == 0x80) continue;
        const std::size_t length = byte >= 0xF0 ? 4 : byte >= 0xE0 ? 3 : byte >= 0xC0 ? 2 : 1;
        return length > back ? back : 0;
    }
    return 0;
}

// A console is given wide text: its code page has not every character, and the C library writes to it byte by byte.
class Stream {
public:
    Stream(std::FILE* file, DWORD handle) : file_(file) {
        DWORD mode = 0;
        if (GetConsoleMode(GetStdHandle(handle), &mode)) console_ = GetStdHandle(handle);
    }

    bool Write(std::string_view bytes) {
        if (console_ == nullptr) return std::fwrite(bytes.data(), 1, bytes.size(), file_) == bytes.size();
        if (std::fflush(file_) != 0) return false;
        held_ += bytes;
        const std::size_t complete = held_.size() - IncompleteEnd(held_);
        const std::u16string wide = Utf8ToUtf16(std::string_view(held_).substr(0, complete));
        held_.erase(0, complete);
        return WriteWide(wide);
    }

private:
    // A console takes no more than some ten thousand characters at once.
    bool WriteWide(std::u16string_view wide) const {
        constexpr std::size_t kMost = 8192;
        while (!wide.empty()) {
            std::size_t part = std::min(kMost, wide.size());
            if (part != wide.size() && IsHighSurrogate(wide[part - 1])) --part;
            DWORD written = 0;
            if (!WriteConsoleW(console_, wide.data(), static_cast<DWORD>(part), &written, nullptr)) return false;
            wide.remove_prefix(part);
        }
        return true;
    }

    std::FILE* file_;
    HANDLE console_ = nullptr;
    std::string held_;
};

}  // namespace

// The narrow arguments are in the code page of the system, which does not hold every name.
std::vector<std::string> Arguments(int, char**) {
    std::vector<std::string> arguments;
    int count = 0;
    const std::unique_ptr<wchar_t*, decltype(&LocalFree)> wide(CommandLineToArgvW(GetCommandLineW(), &count),
                                                               &LocalFree);
    if (!wide) throw std::bad_alloc();
    for (int k = 1; k < count; ++k) {
        std::string text;
        ToUtf8(wide.get()[k], text);
        arguments.push_back(std::move(text));
    }
    return arguments;
}

bool IsErrorTerminal() { return _isatty(_fileno(stderr)) != 0; }

bool WriteOutput(std::string_view bytes) {
    static Stream output(stdout, STD_OUTPUT_HANDLE);
    return output.Write(bytes);
}

bool WriteError(std::string_view bytes) {
    static Stream error(stderr, STD_ERROR_HANDLE);
    return error.Write(bytes);
}

void IgnoreBrokenPipes() {}  // they fail anyway

namespace {

std::atomic<bool> isStopWanted{false};

// Runs on a thread of its own. When it returns from the closing of a console, the system ends the process.
BOOL WINAPI KeepStop(DWORD event) {
    constexpr DWORD kLongest = 10000;  // milliseconds; the system waits no longer
    if (isStopWanted.exchange(true)) return FALSE;
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) Sleep(kLongest);
    return TRUE;
}

}  // namespace

void WatchForStop() { SetConsoleCtrlHandler(&KeepStop, TRUE); }

bool IsStopWanted() { return isStopWanted; }

void EndByStop() {
    constexpr UINT kControlC = 0xC000013A;  // what the system's own handler ends programs with
    ExitProcess(kControlC);
}

void SetBinaryOutput() { _setmode(_fileno(stdout), _O_BINARY); }

// The library uses the same C runtime, and with it the same descriptors.
OutputAside::OutputAside() {
    std::fflush(stdout);
    const int output = _fileno(stdout);
    if (output < 0) return;
    const int nowhere = _open("NUL", _O_WRONLY | _O_NOINHERIT);
    if (nowhere < 0) return;
    kept_ = _dup(output);
    if (kept_ >= 0) _dup2(nowhere, output);
    _close(nowhere);
}

OutputAside::~OutputAside() {
    if (kept_ < 0) return;
    std::fflush(stdout);
    _dup2(kept_, _fileno(stdout));
    _close(kept_);
}

}  // namespace zentor::os
