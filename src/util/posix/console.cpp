#include "util/console.h"

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

}  // namespace zentor::os
