// Finds the sets of samples of a document without reading their samples.
#pragma once

#include <cstddef>
#include <string_view>

#include "reader/outline_contents.h"

namespace zentor {

// Goes through the array of sample sets, from its "[" at `begin` to after its "]" at `end`, jumping over each set by
// its computed size, and records in `outline.sets` where they are. Codes ZT_INVALID_JSON, ZT_SAMPLE_DATA,
// ZT_PROPERTY_TYPE, ZT_DYNAMIC_NODE_NOT_PRESENT with the offset of the fault.
void IndexSampleSets(std::string_view bytes, std::size_t begin, std::size_t end, OutlineContents& outline);

}  // namespace zentor
