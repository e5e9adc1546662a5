// How long a frame of a capture lasts, and how many frames a second that makes.
#pragma once

#include <string_view>

#include "zentor/time_code.h"

namespace zentor {

// The rate that a frame time stands for, as a file gives it: a decimal number of seconds, which was rounded, and often
// to few decimals. False for what is no number, is not greater than 0.001, or is so long that there is no whole frame a
// second. `isExact`: whether that rate's frame time, printed with as many decimals, is the file's.
bool ParseFrameTime(std::string_view text, FrameRate& rate, bool& isExact);

}  // namespace zentor
