// Calls of model operations, and numbers that they refuse.
#pragma once

#include <cstdint>
#include <limits>

#include "model/include/shared_object.h"

namespace zentor_test {

inline constexpr double kLargest = std::numeric_limits<double>::max();
inline constexpr double kInfinity = std::numeric_limits<double>::infinity();
inline constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

// The code of one model operation, which gets the error record.
template <class Call>
std::uint32_t CodeOf(Call&& call) {
    ZT_ErrorRecord error{0, 77, -1, -1};
    call(&error);
    return error.code;
}

}  // namespace zentor_test
