// Numbers that documents hold as text, and padded texts.
#pragma once

#include <string>
#include <string_view>

#include "reader/json_value.h"

namespace zentor {

// A JSON number, or a string that holds a number and nothing else.
bool ReadNumberText(const JsonValue& value, double& number);
// A length: a JSON number, or a string of digits, within the range of counts.
bool ReadLength(const JsonValue& value, double& length);
// The text before the padding, from the bytes between the quotes: its length counts bytes of the document, and escapes
// are decoded after that.
std::string CutPaddedText(std::string_view bytes, double length);

}  // namespace zentor
