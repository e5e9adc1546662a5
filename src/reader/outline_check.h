// Reads any outline, node by node, and finds the first of its faults.
#pragma once

#include <cstddef>
#include <functional>
#include <string_view>

#include "reader/outline_contents.h"
#include "reader/validator.h"

namespace zentor {

// The outline whose "[" stands at `offset`, and sets that offset behind its "]". Of several faults one in the syntax
// comes first, then the first node's with another one, then a sample set identifier that comes twice. Codes
// ZT_MISSING_PROPERTY to ZT_INVALID_JSON, ZT_DUPLICATE_SAMPLE_ID, ZT_SAMPLE_DATA, ZT_DUPLICATE_MATCH_NAME,
// ZT_MATCH_NAME to ZT_PROPERTY_VALUE and ZT_EMPTY_ARRAY, with the byte offset; `passed` as of ScanOutline.
OutlineContents CheckOutline(std::string_view bytes, std::size_t& offset, const ZT_VkjsonValidator& validator,
                             const std::function<void(std::size_t)>& passed);

}  // namespace zentor
