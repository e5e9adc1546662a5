#include "standard_output.h"

#include "library.h"
#include "util/console.h"

namespace zentor_cli {

namespace {

void Require(bool isWritten) {
    if (isWritten) return;
    if (zentor::os::IsOutputClosed()) throw OutputClosed();
    throw LibraryFailure("standard output cannot be written");
}

}  // namespace

void WriteOutput(std::string_view bytes) {
    if (zentor::os::IsStopWanted()) throw Stopped();
    Require(zentor::os::WriteOutput(bytes));
}

void FlushOutput() { Require(zentor::os::FlushOutput()); }

}  // namespace zentor_cli
