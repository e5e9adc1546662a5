// The text of a set of samples: records of one fixed width.
#pragma once

#include "model/node_values.h"
#include "model/sample_buffer.h"
#include "model/writer_interface.h"
#include "writer/text_buffer.h"

namespace zentor {

// A whole set, emptying the buffer. The pattern or the string properties of the node are wide enough for every sample;
// each time has `timeLength` bytes. Returns where in the document the samples stand. Codes of File_IO.
ZT_PLUGIN::ByteRange AppendSampleSet(TextBuffer& text, const ZT_PLUGIN::DynamicNodeView& node, std::size_t timeLength,
                                     ZT_PLUGIN::SampleBuffer& samples);

}  // namespace zentor
