#include "util/console.h"

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <shellapi.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
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
    explicit Stream(std::FILE* file) : file_(file) {}

    // `kept`: a descriptor to write to in place of the file; -1 for none.
    bool Write(std::string_view bytes, int kept = -1) {
        console_ = reinterpret_cast<HANDLE>(_get_osfhandle(kept >= 0 ? kept : _fileno(file_)));
        DWORD mode = 0;
        if (!GetConsoleMode(console_, &mode)) {
            return kept >= 0 ? WriteKept(kept, bytes)
                             : std::fwrite(bytes.data(), 1, bytes.size(), file_) == bytes.size();
        }
        if (kept < 0 && std::fflush(file_) != 0) return false;
        held_ += bytes;
        const std::size_t complete = held_.size() - IncompleteEnd(held_);
        const std::u16string wide = Utf8ToUtf16(std::string_view(held_).substr(0, complete));
        held_.erase(0, complete);
        return WriteWide(wide);
    }

private:
    static bool WriteKept(int output, std::string_view bytes) {
        constexpr std::size_t kMost = 0x100000;
        while (!bytes.empty()) {
            const int written = _write(output, bytes.data(), static_cast<unsigned>(std::min(kMost, bytes.size())));
            if (written < 0) return false;
            bytes.remove_prefix(static_cast<std::size_t>(written));
        }
        return true;
    }

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

namespace {

// Adds the files that a name with wildcards stands for, by their names; the argument itself when there are none.
void AddFiles(const std::wstring& pattern, std::vector<std::string>& arguments) {
    const std::size_t separator = pattern.find_last_of(L"/\\:");
    const std::wstring folder = pattern.substr(0, separator == std::wstring::npos ? 0 : separator + 1);
    std::vector<std::string> found;
    WIN32_FIND_DATAW entry;
    const HANDLE search = FindFirstFileW(pattern.c_str(), &entry);
    if (search != INVALID_HANDLE_VALUE) {
        do {
            if ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) continue;
            ToUtf8((folder + static_cast<const wchar_t*>(entry.cFileName)).c_str(), found.emplace_back());
        } while (FindNextFileW(search, &entry));
        FindClose(search);
    }
    if (found.empty()) ToUtf8(pattern.c_str(), found.emplace_back());
    std::sort(found.begin(), found.end());
    arguments.insert(arguments.end(), found.begin(), found.end());
}

}  // namespace

// The narrow arguments are in the code page of the system, which does not hold every name.
std::vector<std::string> Arguments(int, char**) {
    std::vector<std::string> arguments;
    int count = 0;
    const std::unique_ptr<wchar_t*, decltype(&LocalFree)> wide(CommandLineToArgvW(GetCommandLineW(), &count),
                                                               &LocalFree);
    if (!wide) throw std::bad_alloc();
    for (int k = 1; k < count; ++k) {
        const std::wstring argument = wide.get()[k];
        if (argument.find_first_of(L"*?") != std::wstring::npos) {
            AddFiles(argument, arguments);
        } else {
            ToUtf8(argument.c_str(), arguments.emplace_back());
        }
    }
    return arguments;
}

bool IsErrorTerminal() { return _isatty(_fileno(stderr)) != 0; }

namespace {

std::atomic<int> keptOutput{-1};  // a descriptor of the standard output, while it is aside
std::atomic<bool> isOutputClosed{false};

// The C library says "invalid argument" of a pipe that nobody reads.
bool Noticed(bool isWritten) {
    if (!isWritten && (errno == EPIPE || errno == EINVAL)) isOutputClosed = true;
    return isWritten;
}

}  // namespace

bool WriteOutput(std::string_view bytes) {
    static Stream output(stdout);
    errno = 0;
    return Noticed(output.Write(bytes, keptOutput));
}

bool WriteError(std::string_view bytes) {
    static Stream error(stderr);
    return error.Write(bytes);
}

bool FlushOutput() {
    errno = 0;
    return Noticed(std::fflush(stdout) == 0 && std::ferror(stdout) == 0);
}

bool IsOutputClosed() { return isOutputClosed; }

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

void EndByBrokenPipe() { ExitProcess(1); }

bool ReadInput(char* buffer, std::size_t count, std::size_t& got) {
    constexpr std::size_t kMost = 0x100000;
    _setmode(_fileno(stdin), _O_BINARY);
    const int taken = _read(_fileno(stdin), buffer, static_cast<unsigned>(std::min(kMost, count)));
    got = taken < 0 ? 0 : static_cast<std::size_t>(taken);
    return taken >= 0;
}

void SetBinaryOutput() { _setmode(_fileno(stdout), _O_BINARY); }

// The library uses the same C runtime, and with it the same descriptors.
OutputAside::OutputAside() {
    std::fflush(stdout);
    const int output = _fileno(stdout);
    if (output < 0) return;
    const int nowhere = _open("NUL", _O_WRONLY | _O_NOINHERIT);
    if (nowhere < 0) return;
    const int kept = _dup(output);
    if (kept >= 0) {
        _dup2(nowhere, output);
        keptOutput = kept;
        isAside_ = true;
    }
    _close(nowhere);
}

OutputAside::~OutputAside() {
    if (!isAside_) return;
    std::fflush(stdout);
    const int kept = keptOutput.exchange(-1);
    _dup2(kept, _fileno(stdout));
    _close(kept);
}

}  // namespace zentor::os
