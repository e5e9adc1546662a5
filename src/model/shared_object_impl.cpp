#include "model/shared_object_impl.h"

namespace ZT_PLUGIN {

namespace {

// Subtracts 1 unless the counter is 0; false when it is.
bool TakeOne(std::atomic<std::uint64_t>& counter) {
    std::uint64_t value = counter.load();
    while (value != 0) {
        if (counter.compare_exchange_weak(value, value - 1)) return true;
    }
    return false;
}

}  // namespace

void SharedObjectImpl::AddClientReference() noexcept {
    handedOver_.fetch_add(1);
    refCount_.fetch_add(1);
    lifetime_.fetch_add(1);
}

void SharedObjectImpl::Acquire() noexcept {
    if (TakeOne(handedOver_)) return;
    refCount_.fetch_add(1);
    lifetime_.fetch_add(1);
}

void SharedObjectImpl::Release() noexcept {
    if (TakeOne(refCount_)) {
        // A client that gives back what it never took over has nothing left to take over.
        if (handedOver_.load() > refCount_.load()) TakeOne(handedOver_);
        RemoveOwner();
    } else if (lifetime_.load() == 0) {
        OnUnreferenced();
    }
}

void SharedObjectImpl::DropClientReferences() noexcept {
    handedOver_.store(0);
    // NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDelete): the caller's handle is left
    while (TakeOne(refCount_)) RemoveOwner();
}

bool SharedObjectImpl::TryAddOwner() noexcept {
    std::uint64_t owners = lifetime_.load();
    while (owners != 0) {
        if (lifetime_.compare_exchange_weak(owners, owners + 1)) return true;
    }
    return false;
}

void SharedObjectImpl::RemoveOwner() noexcept {
    if (lifetime_.fetch_sub(1) == 1) OnUnreferenced();
}

}  // namespace ZT_PLUGIN
