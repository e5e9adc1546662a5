#include "util/console.h"

#include <signal.h>
#include <unistd.h>

namespace zentor::os {

std::vector<std::string> Arguments(int argc, char** argv) { return {argv + 1, argv + argc}; }

bool IsErrorTerminal() { return isatty(STDERR_FILENO) != 0; }

void IgnoreBrokenPipes() { signal(SIGPIPE, SIG_IGN); }

void SetBinaryOutput() {}

}  // namespace zentor::os
