#include "util/console.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstdlib>

namespace zentor::os {

std::vector<std::string> Arguments(int argc, char** argv) { return {argv + 1, argv + argc}; }

bool IsErrorTerminal() { return isatty(STDERR_FILENO) != 0; }

namespace {

std::atomic<int> keptOutput{-1};  // a descriptor of the standard output, while it is aside
std::atomic<bool> isOutputClosed{false};

bool WriteKept(int output, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(output, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

}  // namespace

bool WriteOutput(std::string_view bytes) {
    errno = 0;
    const int kept = keptOutput;
    const bool isWritten =
        kept >= 0 ? WriteKept(kept, bytes) : std::fwrite(bytes.data(), 1, bytes.size(), stdout) == bytes.size();
    if (!isWritten && errno == EPIPE) isOutputClosed = true;
    return isWritten;
}

bool FlushOutput() {
    errno = 0;
    const bool isWritten = std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
    if (!isWritten && errno == EPIPE) isOutputClosed = true;
    return isWritten;
}

bool IsOutputClosed() { return isOutputClosed; }

bool WriteError(std::string_view bytes) { return std::fwrite(bytes.data(), 1, bytes.size(), stderr) == bytes.size(); }

void IgnoreBrokenPipes() { signal(SIGPIPE, SIG_IGN); }

namespace {

volatile sig_atomic_t stopSignal = 0;

extern "C" void KeepStop(int signal) { stopSignal = signal; }

}  // namespace

void WatchForStop() {
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction action {};
        if (sigaction(number, nullptr, &action) != 0 || action.sa_handler == SIG_IGN) continue;
        action.sa_handler = &KeepStop;
        action.sa_flags = SA_RESTART | static_cast<int>(SA_RESETHAND);
        sigaction(number, &action, nullptr);
    }
}

bool IsStopWanted() { return stopSignal != 0; }

void EndByStop() {
    signal(stopSignal, SIG_DFL);
    raise(stopSignal);
    std::_Exit(128 + stopSignal);  // where it is blocked
}

void EndByBrokenPipe() {
    signal(SIGPIPE, SIG_DFL);
    raise(SIGPIPE);
    std::_Exit(1);  // where it is blocked
}

bool ReadInput(char* buffer, std::size_t count, std::size_t& got) {
    ssize_t taken = -1;
    do {
        taken = read(STDIN_FILENO, buffer, count);
    } while (taken < 0 && errno == EINTR && !IsStopWanted());
    got = taken < 0 ? 0 : static_cast<std::size_t>(taken);
    return taken >= 0;
}

void SetBinaryOutput() {}

OutputAside::OutputAside() {
    std::fflush(stdout);
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (nowhere < 0) return;
    const int kept = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    if (kept >= 0) {
        dup2(nowhere, STDOUT_FILENO);
        keptOutput = kept;
        isAside_ = true;
    }
    close(nowhere);
}

OutputAside::~OutputAside() {
    if (!isAside_) return;
    std::fflush(stdout);
    const int kept = keptOutput.exchange(-1);
    dup2(kept, STDOUT_FILENO);
    close(kept);
}

}  // namespace zentor::os
