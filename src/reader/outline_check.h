// Reads any outline, node by node, and finds the first of its faults.
#pragma once

#include <cstddef>
#include <functional>
#include <string_view>

#include "reader/outline_contents.h"
#include "reader/validator.h"

namespace zentor {

// The outline whose "[" stands at `offset`, and sets that offset behind its "]". Of several faults one in the syntax
// comes first, then the first node's with another one, then a sample set identifier that comes twice. Codes 28 to 32,
// 37, 39, 40, 42 to 44 and 47, with the byte offset; `passed` as of ScanOutline.
OutlineContents CheckOutline(std::string_view bytes, std::size_t& offset, const ZT_VkjsonValidator& validator,
                             const std::function<void(std::size_t)>& passed);

}  // namespace zentor
