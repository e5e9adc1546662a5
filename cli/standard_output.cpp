#include "standard_output.h"

#include <cstdio>

#include "library.h"
#include "util/console.h"

namespace zentor_cli {

namespace {

void Require(bool isWritten) {
    if (!isWritten) throw LibraryFailure("standard output cannot be written");
}

}  // namespace

void WriteOutput(std::string_view bytes) {
    if (zentor::os::IsStopWanted()) throw Stopped();
    Require(zentor::os::WriteOutput(bytes));
}

void FlushOutput() { Require(std::fflush(stdout) == 0 && std::ferror(stdout) == 0); }

}  // namespace zentor_cli
