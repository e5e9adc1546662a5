// The texts of a document that has just been made.
#pragma once

#include <string>

#include "library.h"

namespace zentor_cli {

// Fails with the byte offset of the first backslash or control character in a converted document. Texts go into a
// document as they are; the library reads such a document, but takes a backslash with what follows it for an escape,
// and other readers of JSON do not take control characters at all. Plug-ins may escape what they find: in their
// documents a backslash is one only where it begins no escape. Says nothing of an input that is a document itself.
void CheckTexts(Stream& stream, const std::string& inputPath);

}  // namespace zentor_cli
