// Standard output. Each function throws LibraryFailure when it cannot be written, so that work for a reader that has
// gone away ends.
#pragma once

#include <string_view>

namespace zentor_cli {

void WriteOutput(std::string_view bytes);

void FlushOutput();

}  // namespace zentor_cli
