// RapidJSON as the library uses it: its assertions become failures with ZT_ASSERTION, and memory that it does not get
// an exception.
#pragma once

#include <cstdlib>
#include <new>

#include "errors/raise.h"

namespace zentor {
[[noreturn]] inline void RaiseJsonAssertion() { Raise(kAssertionFailure, "RapidJSON"); }
}  // namespace zentor

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

}  // namespace zentor
