#include "util/console.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace zentor::os {

std::vector<std::string> Arguments(int argc, char** argv) { return {argv + 1, argv + argc}; }

bool IsErrorTerminal() { return isatty(STDERR_FILENO) != 0; }

bool WriteOutput(std::string_view bytes) { return std::fwrite(bytes.data(), 1, bytes.size(), stdout) == bytes.size(); }

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

void SetBinaryOutput() {}

OutputAside::OutputAside() {
    std::fflush(stdout);
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (nowhere < 0) return;
    kept_ = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    if (kept_ >= 0) dup2(nowhere, STDOUT_FILENO);
    close(nowhere);
}

OutputAside::~OutputAside() {
    if (kept_ < 0) return;
    std::fflush(stdout);
    dup2(kept_, STDOUT_FILENO);
    close(kept_);
}

}  // namespace zentor::os
