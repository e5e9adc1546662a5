// Comparison of time strings. Each function returns a number below, equal to or above 0 as the left time is before, at
// or after the right one, and fails with ZT_GENERAL when either text is no such time.
#pragma once

#include <string_view>

#include "zentor/time_code.h"

namespace zentor {

// As instants: offsets are applied, and decimals need not be equally many.
int CompareUTCTime(std::string_view left, std::string_view right);
int CompareSMPTETime(std::string_view left, std::string_view right, const FrameRate& rate);

}  // namespace zentor
