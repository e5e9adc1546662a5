// How a failure on the converting side reaches the host.
#pragma once

#include <cstdint>

namespace zentor {

// A library failure with code c is c + this on the converting side.
inline constexpr std::uint32_t kConvertingSideOffset = 1000;

// Raises a converter's failure with its code. When the library itself failed on this thread with the code that this one
// stands for (a full disk, say), with that failure's text; otherwise as an internal converter failure. The thread's
// last exception has to be one of this conversion, or none.
[[noreturn]] void RaiseConverterFailure(std::uint32_t code, std::int64_t extra1, std::int64_t extra2);

}  // namespace zentor
