// How deep and how large a document may be.
#pragma once

#include <cstddef>
#include <cstdint>

namespace zentor {

// How deep groups may stand in each other.
inline constexpr std::size_t kGroupLimit = 100;

// How deep brackets may, whatever they mean. It protects readers; messages name the limit of groups.
inline constexpr std::size_t kNestingLimit = 400;

// The counts, digits and lengths that a document states: up to here every whole number is a double.
inline constexpr std::uint64_t kLargestCount = std::uint64_t{1} << 53;

}  // namespace zentor
