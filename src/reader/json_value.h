// RapidJSON's in-memory values, as the reader keeps them. Strings point into the document's bytes where those need no
// decoding, so values live no longer than the mapping.
#pragma once

#include <string_view>

#include "errors/rapidjson.h"

namespace zentor {

using JsonPool = rapidjson::MemoryPoolAllocator<JsonMemory>;
using JsonValue = rapidjson::GenericValue<rapidjson::UTF8<>, JsonPool>;
using JsonDocument = rapidjson::GenericDocument<rapidjson::UTF8<>, JsonPool, JsonMemory>;
using JsonSize = rapidjson::SizeType;

inline std::string_view TextOf(const JsonValue& string) { return {string.GetString(), string.GetStringLength()}; }

// The first member with this name; null when the object has none.
inline const JsonValue* FindMember(const JsonValue& object, std::string_view name) {
    const auto member = object.FindMember(rapidjson::StringRef(name.data(), name.size()));
    return member == object.MemberEnd() ? nullptr : &member->value;
}

}  // namespace zentor
