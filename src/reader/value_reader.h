// Reads one JSON value of a document, into memory or only to see that it is one.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "reader/json_value.h"
#include "util/json_cursor.h"

namespace zentor {

// Reads the value at the cursor, which belongs to the top-level property `property`. Codes ZT_INVALID_JSON and
// ZT_PROPERTY_TYPE, with the byte offset; ZT_OUT_OF_MEMORY. Texts without escapes stay in the document's bytes.
JsonDocument ReadValue(JsonCursor& cursor, std::string_view property);
// The same into a document that is being built (see JsonDocument::Populate).
void ReadValueInto(JsonDocument& builder, JsonCursor& cursor, std::string_view property);

// Arrays under a key that other members of their object follow: where each begins, at its "[", and ends, after its "]".
using ArraySpans = std::vector<std::pair<std::size_t, std::size_t>>;

// Goes past the value at the cursor with the same failures, and keeps nothing but the spans of arrays under `key`, in
// the order in which they begin.
ArraySpans CheckValue(JsonCursor& cursor, std::string_view property, std::string_view key);

// The failures of a number that stands at `offset`: ZT_INVALID_JSON and ZT_PROPERTY_TYPE.
[[noreturn]] void RaiseNumberFailure(NumberStatus status, std::size_t offset, const std::string& property);

}  // namespace zentor
