// Whether a text is JSON that a document can be made of.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "util/number_text.h"

namespace zentor {

// Where the first fault of a text is; nothing when it has none. Parsed by RapidJSON, without recursion and without
// keeping any value. Faults are, besides what is no JSON: bytes that are no UTF-8, and escapes for half a character; a
// number beyond the largest double, also in the form in which it is written; objects and arrays standing deeper in each
// other than groups of a document may; a top-level value that is neither an object nor an array. A zero with an
// exponent of more than 308, and a number of more than 308 digits before its point, are beyond RapidJSON. Code
// ZT_ASSERTION for a string of 4 GiB or more.
std::optional<std::size_t> FindJsonFault(std::string_view text, NumberForm form);

}  // namespace zentor
