// Whether the texts of a document come back as they went in. They go into documents as they are: a control character,
// or a backslash that is no escape, makes one that other readers of JSON refuse, or take for another text.
#pragma once

#include <string>
#include <vector>

#include "model/writer_interface.h"

namespace zentor {

// Of a converter that may escape what it writes; where the samples of numbers stand there is nothing to look for. Codes
// ZT_CONVERSION with the byte offset of the first fault in the document, ZT_FILE_OPEN.
void CheckEscapedTexts(const std::string& documentPath, const std::vector<ZT_PLUGIN::ByteRange>& numberSamples);

}  // namespace zentor
