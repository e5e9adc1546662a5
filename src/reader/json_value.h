// RapidJSON's in-memory values, as the reader keeps them. Strings point into the document's bytes where those need no
// decoding, so values live no longer than the mapping. Assertions of the library become failures with code 19.
#pragma once

#include <string_view>

namespace zentor {
[[noreturn]] void RaiseJsonAssertion();
}

#define RAPIDJSON_ASSERT(condition) ((condition) ? static_cast<void>(0) : ::zentor::RaiseJsonAssertion())
#define RAPIDJSON_ASSERT_THROWS
#include <rapidjson/document.h>

namespace zentor {

using JsonDocument = rapidjson::Document;
using JsonValue = rapidjson::Value;
using JsonSize = rapidjson::SizeType;

inline std::string_view TextOf(const JsonValue& string) { return {string.GetString(), string.GetStringLength()}; }

// The first member with this name; null when the object has none.
inline const JsonValue* FindMember(const JsonValue& object, std::string_view name) {
    const auto member = object.FindMember(rapidjson::StringRef(name.data(), name.size()));
    return member == object.MemberEnd() ? nullptr : &member->value;
}

}  // namespace zentor
