// Whole division that is rounded down, below zero too.
#pragma once

#include <cstdint>

namespace zentor {

struct Division {
    std::int64_t quotient;
    std::int64_t rest;  // from 0 up to the divisor
};

// The divisor is above 0.
inline Division DivideDown(std::int64_t number, std::int64_t divisor) {
    const Division division = {number / divisor, number % divisor};
    return division.rest < 0 ? Division{division.quotient - 1, division.rest + divisor} : division;
}

}  // namespace zentor
