// How deep groups of a document may stand in each other.
#pragma once

#include <cstddef>

namespace zentor {

inline constexpr std::size_t kGroupLimit = 100;

}  // namespace zentor
