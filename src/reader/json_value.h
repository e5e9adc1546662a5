// RapidJSON's in-memory values, as the reader keeps them. Strings point into the document's bytes where those need no
// decoding, so values live no longer than the mapping. Assertions of the library become failures with code 19.
#pragma once

#include <cstdlib>
#include <new>
#include <string_view>

namespace zentor {
[[noreturn]] void RaiseJsonAssertion();
}

#define RAPIDJSON_ASSERT(condition) ((condition) ? static_cast<void>(0) : ::zentor::RaiseJsonAssertion())
#define RAPIDJSON_ASSERT_THROWS
#include <rapidjson/document.h>

namespace zentor {

// RapidJSON does not look whether it has got the memory that it has asked for.
class JsonMemory {
public:
    static const bool kNeedFree = true;

    void* Malloc(std::size_t size) { return size == 0 ? nullptr : Checked(std::malloc(size)); }
    void* Realloc(void* memory, std::size_t, std::size_t size) {
        if (size != 0) return Checked(std::realloc(memory, size));
        std::free(memory);
        return nullptr;
    }
    static void Free(void* memory) { std::free(memory); }

    bool operator==(const JsonMemory&) const { return true; }

private:
    static void* Checked(void* memory) {
        if (memory == nullptr) throw std::bad_alloc();
        return memory;
    }
};

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
