// Finds the end of an array by its square brackets alone, without looking at what is between them.
#pragma once

#include <cstddef>
#include <string_view>

namespace zentor {

// The position after the bracket that takes `depth`, the number of open square brackets, to 0; the end of the bytes,
// with `depth` counted on, when there is none. Brackets in strings count like all others.
std::size_t FindClosingBracket(std::string_view bytes, std::size_t& depth);

}  // namespace zentor
