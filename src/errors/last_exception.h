// The latest failure of each thread.
#pragma once

#include <cstdint>
#include <string>

namespace zentor {

struct LastException {
    std::uint32_t code = 0;
    std::string message;
    std::int64_t extra1 = 0;
    std::int64_t extra2 = 0;
};

// The text of a report that has no message of its own.
inline constexpr const char* kUnknownExceptionText = "Unknown exception";

// Replaces the calling thread's record.
void SetLastException(LastException record) noexcept;
// Takes the calling thread's record and leaves it empty (code 0), as it is before the thread's first failure.
LastException TakeLastException() noexcept;

}  // namespace zentor
