#include "util/console.h"

#include <unistd.h>

namespace zentor::os {

std::vector<std::string> Arguments(int argc, char** argv) { return {argv + 1, argv + argc}; }

bool IsErrorTerminal() { return isatty(STDERR_FILENO) != 0; }

void SetBinaryOutput() {}

}  // namespace zentor::os
