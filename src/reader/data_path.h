// Data paths as hosts write them.
#pragma once

#include <string_view>

#include "zentor/records.h"

namespace zentor {

// The items of a path such as [0]["data1"], after the root. What stands before a "[" is skipped. A first item
// ["dataOutline"] is the root itself. A text in brackets that is neither a quoted name nor a number makes an item
// without name and index. Codes ZT_INVALID_POINTER (empty), ZT_DATA_PATH (no "[" where one should be),
// ZT_DATA_PATH_BRACKET (no "]").
ZT_DataPath ParseDataPath(std::string_view text);

}  // namespace zentor
