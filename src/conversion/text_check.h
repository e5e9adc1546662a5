// Whether the texts of a document come back as they went in.
#pragma once

#include <string>

namespace zentor {

// Texts go into documents as they are: a control character, or a backslash that is no escape, makes one that other
// readers of JSON refuse, or take for another text. `mayEscape`: the converter escapes what it writes; else every
// backslash is one of the input. Codes ZT_CONVERSION with the byte offset of the first of them, ZT_FILE_OPEN.
void CheckTexts(const std::string& documentPath, bool mayEscape);

}  // namespace zentor
