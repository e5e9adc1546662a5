// Numbers that documents before version 2 hold as text.
#pragma once

#include "reader/json_value.h"

namespace zentor {

// A JSON number, or a string that holds a number and nothing else.
bool ReadNumberText(const JsonValue& value, double& number);
// A length: a JSON number, or a string of digits, within the range of counts.
bool ReadLength(const JsonValue& value, double& length);

}  // namespace zentor
