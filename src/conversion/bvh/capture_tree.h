// The joints of a capture as nodes of a document.
#pragma once

#include <vector>

#include "conversion/bvh/skeleton.h"
#include "conversion/native_frame.h"

namespace zentor {

// A dynamic array and the columns of a frame that it takes.
struct CaptureTrack {
    ZT_PLUGIN::Owner<ZT_PLUGIN::VkjsonDynamicDataNumArrImpl> node;
    std::vector<std::size_t> columns;
};

// Attaches a group for each joint to the root: its offset, its positions and rotations, if it has any, and its
// children; among them, in a faithful document, the offsets of end sites. Returns the arrays in the order of the
// outline.
std::vector<CaptureTrack> BuildCaptureTree(const ZT_ConverterHandlerBase& converter, ZT_PLUGIN::VkjsonRootImpl& root,
                                           const Skeleton& skeleton);

}  // namespace zentor
