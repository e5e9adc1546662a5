// How large the counts, digits and lengths that a document states may be.
#pragma once

#include <cstdint>

namespace zentor {

inline constexpr std::uint64_t kLargestCount = std::uint64_t{1} << 53;  // up to here every whole number is a double

}  // namespace zentor
