// Reference counting of shared objects, and the handles through which the library holds them.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <utility>

#include "model/include/shared_object.h"

namespace ZT_PLUGIN {

// The library's view of a shared object.
class ISharedObject_I {
public:
    virtual ~ISharedObject_I() = default;
};

// `refCount` counts the references of clients, `handedOver` those among them that a client has not taken over yet.
// `lifetime` adds the library's own handles, so that a client that releases too often cannot take an object away from
// the library.
class SharedObjectImpl : public virtual ISharedObject_I, public virtual ISharedObject {
public:
    void Acquire() noexcept override;
    void Release() noexcept override;
    void* GetInternal() noexcept override { return static_cast<ISharedObject_I*>(this); }
    void DeletingDestructor(std::uint32_t) noexcept override { Release(); }

    // Counts a reference for a client that is about to receive the object.
    virtual void AddClientReference() noexcept;

    // Gives back what clients have not; the caller has a handle of its own.
    void DropClientReferences() noexcept;

    void AddOwner() noexcept { lifetime_.fetch_add(1); }
    // The same for an object that another thread may be making or ending at this moment: false, and nothing counted,
    // when nobody has it.
    bool TryAddOwner() noexcept;
    void RemoveOwner() noexcept;

protected:
    SharedObjectImpl() = default;
    ~SharedObjectImpl() override = default;
    // The last reference is gone.
    virtual void OnUnreferenced() noexcept { delete this; }

private:
    std::atomic<std::uint64_t> refCount_{0};
    std::atomic<std::uint64_t> handedOver_{0};
    std::atomic<std::uint64_t> lifetime_{0};
};

// The library's handle on a shared object.
template <class Object>
using Owner = std::shared_ptr<Object>;

template <class Object>
Owner<Object> MakeOwner(Object* object) {
    object->AddOwner();
    return Owner<Object>(object, [](Object* held) { held->RemoveOwner(); });
}

}  // namespace ZT_PLUGIN
