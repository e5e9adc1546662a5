// What stands between the joints of a capture and its frames.
#pragma once

#include <cstdint>

#include "conversion/bvh/capture_input.h"
#include "zentor/time_code.h"

namespace zentor {

struct MotionHeader {
    std::uint64_t frames;  // as declared; too large a number counts as the largest
    FrameRate rate;
};

// Looks for "Frames:" and its count and then for "Frame Time:" and its number, whatever other words there are before
// each of the two labels. Reads up to the end of the frame time's line, or to the first frame. Codes ZT_CONVERSION, and
// ZT_FRAME_TIME, as a plug-in exception, for a frame time that is no number, is not greater than 0.001 seconds, or is
// so long that there is no whole frame a second.
MotionHeader ReadMotionHeader(CaptureInput& input);

}  // namespace zentor
