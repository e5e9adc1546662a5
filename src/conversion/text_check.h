// Whether the texts of a document come back as they went in. They go into documents as they are: a control character,
// or a backslash that is no escape, makes one that other readers of JSON refuse, or take for another text.
#pragma once

#include <string>

#include "writer/text_watch.h"

namespace zentor {

// Of a converter that escapes nothing, so that every backslash is one of the input. Code ZT_CONVERSION with the byte
// offset of the first fault.
void CheckTexts(const TextWatch& watch);

// Of a converter that may escape what it writes. The same, and ZT_FILE_OPEN.
void CheckEscapedTexts(const std::string& documentPath);

}  // namespace zentor
