// Frame rates as documents have them.
#pragma once

#include "zentor/time_code.h"

namespace zentor {

// What is called 29.97 and 59.94 frames a second.
inline constexpr FrameRate kRate2997{30000, 1001, false};
inline constexpr FrameRate kRate5994{60000, 1001, false};

// Whether time codes may be counted with drop frame, which exists for 29.97 and 59.94 frames a second. Documents give
// these as fractions or rounded to two decimals (2997/100), so that a rate within 0.0001 of one is it. Whoever writes
// documents asks here, and whoever reads them does.
bool AllowsDropFrame(double framesPerSecond);

}  // namespace zentor
