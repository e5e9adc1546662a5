// The samples of a document, which are not parsed when it is opened.
#pragma once

#include <cstddef>
#include <string_view>

#include "reader/temp_file.h"

namespace zentor {

class ZT_SampleDataProcessor {
public:
    // Copies the array that begins with the "[" at `begin`, as it stands, to a temporary file; returns where it ends,
    // after the "]". Every square bracket counts, also in strings. Code 32 at the end of the bytes without it; 14,
    // 15, 21.
    std::size_t CopySamples(std::string_view bytes, std::size_t begin);

private:
    TempFileHandler copy_;
};

// The position after the bracket that takes `depth`, the number of open square brackets, to 0; the end of the bytes,
// with `depth` counted on, when there is none.
std::size_t FindClosingBracket(std::string_view bytes, std::size_t& depth);

}  // namespace zentor
