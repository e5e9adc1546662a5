// The first part of a capture: the joints.
#pragma once

#include "conversion/bvh/capture_input.h"
#include "conversion/bvh/skeleton.h"
#include "conversion/loss_watch.h"

namespace zentor {

// Reads from "HIERARCHY" up to what follows the last root's closing brace. Keywords and channel names may be in any
// case, line ends stand anywhere, and nearly everything may be missing; what cannot be understood is refused with
// ZT_CONVERSION.
Skeleton ReadHierarchy(CaptureInput& input, NumberForm form, LossWatch& watch);

}  // namespace zentor
