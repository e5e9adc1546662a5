// The model objects that exist, by the addresses under which clients know them. A pointer that comes back from a client
// is looked up here and never used unless it is found.
#pragma once

#include "model/shared_object_impl.h"

namespace ZT_PLUGIN {

// Thread-safe. Add may run out of memory; the addresses of an object are removed before it goes.
void AddLiveObject(const void* address, SharedObjectImpl* object, std::uint64_t streamId);
void RemoveLiveObject(const void* address) noexcept;

// The object that has an interface at `address`, or null.
SharedObjectImpl* FindLiveObject(const void* address) noexcept;

// The same for one implementation class: null also for an object of another class.
template <class Implementation>
Implementation* FindLive(const void* address) noexcept {
    return dynamic_cast<Implementation*>(FindLiveObject(address));
}

// For clients: reference counting by address. A pointer that is no live object is ignored.
void AcquireLiveObject(ISharedObject* object) noexcept;
void ReleaseLiveObject(ISharedObject* object) noexcept;

// Gives back all references that clients still have to the nodes of a stream, whose conversion is over.
void ReclaimNodes(std::uint64_t streamId) noexcept;

}  // namespace ZT_PLUGIN
