#include "util/console.h"

#include <signal.h>
#include <unistd.h>

#include <cstdio>

namespace zentor::os {

std::vector<std::string> Arguments(int argc, char** argv) { return {argv + 1, argv + argc}; }

bool IsErrorTerminal() { return isatty(STDERR_FILENO) != 0; }

void WriteError(const std::string& text) { std::fputs(text.c_str(), stderr); }

void SetUtf8Output() {}

void IgnoreBrokenPipes() { signal(SIGPIPE, SIG_IGN); }

void SetBinaryOutput() {}

}  // namespace zentor::os
