// Reads a plain outline fast: of version 2, with the properties that documents have, no others, none twice and no
// escapes in names. That is what writers make. An outline that it takes is valid; one that it does not take may be,
// too: OutlineCheck tells, and says what is wrong.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string_view>

#include "reader/outline_contents.h"

namespace zentor {

// The outline whose "[" stands at `offset`, and sets that offset behind its "]". `passed` is called now and then with
// the offset up to which everything has been read. Nothing, with the offset as it was, when it is not plain.
std::optional<OutlineContents> ScanOutline(std::string_view bytes, std::size_t& offset,
                                           const std::function<void(std::size_t)>& passed);

}  // namespace zentor
