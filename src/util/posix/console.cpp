#include "util/console.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <cstdio>

namespace zentor::os {

std::vector<std::string> Arguments(int argc, char** argv) { return {argv + 1, argv + argc}; }

bool IsErrorTerminal() { return isatty(STDERR_FILENO) != 0; }

bool WriteOutput(std::string_view bytes) { return std::fwrite(bytes.data(), 1, bytes.size(), stdout) == bytes.size(); }

bool WriteError(std::string_view bytes) { return std::fwrite(bytes.data(), 1, bytes.size(), stderr) == bytes.size(); }

void IgnoreBrokenPipes() { signal(SIGPIPE, SIG_IGN); }

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
