// Lifetime of the objects that the library shares with converter plug-ins, and the error record of their operations.
//
// The interfaces are flat tables of functions: no base classes, no overloads, no virtual destructors. Nothing is thrown
// across them.
#pragma once

#include <stdint.h>

// The outcome of an operation. The caller sets both details to -1 before a call; `code` 0 is success.
struct ZT_ErrorRecord {
    uint32_t field;
    uint32_t code;
    int64_t extra1;
    int64_t extra2;
};

namespace ZT_PLUGIN {

// One more counted reference is taken with Acquire and given back with Release; the object goes with the last one.
// A new object is handed over with one reference already counted; the first Acquire takes that one over.
struct ISharedObject {
    virtual void Acquire() noexcept = 0;                           // slot 1
    virtual void Release() noexcept = 0;                           // slot 2
    virtual void* GetInternal() noexcept = 0;                      // slot 3: the library's own view, opaque to clients
    virtual void DeletingDestructor(uint32_t flags) noexcept = 0;  // slot 4: the same as Release

protected:
    ~ISharedObject() = default;
};

}  // namespace ZT_PLUGIN
