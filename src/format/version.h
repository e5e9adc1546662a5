// Which version a document has, told by its first property.
#pragma once

#include <string_view>

namespace zentor {

enum class LetterCase { kExact, kAny };

// Whether a text begins as documents of version 2 do: an object whose first key is "version" and has its word for a
// value, in this letter case of A to Z. Never fails.
bool BeginsAsVersion2(std::string_view text, LetterCase letterCase);

}  // namespace zentor
