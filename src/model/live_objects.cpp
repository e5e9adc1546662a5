#include "model/live_objects.h"

#include <mutex>
#include <unordered_map>
#include <vector>

namespace ZT_PLUGIN {

namespace {

std::mutex registryMutex;

struct LiveObject {
    SharedObjectImpl* object;
    std::uint64_t streamId;
};

std::unordered_map<const void*, LiveObject>& Registry() {
    static std::unordered_map<const void*, LiveObject> registry;
    return registry;
}

}  // namespace

void AddLiveObject(const void* address, SharedObjectImpl* object, std::uint64_t streamId) {
    const std::lock_guard lock(registryMutex);
    Registry()[address] = {object, streamId};
}

void RemoveLiveObject(const void* address) noexcept {
    const std::lock_guard lock(registryMutex);
    Registry().erase(address);
}

SharedObjectImpl* FindLiveObject(const void* address) noexcept {
    const std::lock_guard lock(registryMutex);
    const auto found = Registry().find(address);
    return found == Registry().end() ? nullptr : found->second.object;
}

void ReclaimNodes(std::uint64_t streamId) noexcept {
    std::vector<SharedObjectImpl*> nodes;  // go outside the lock, which their ends take
    try {
        const std::lock_guard lock(registryMutex);
        for (const auto& [address, live] : Registry()) {
            if (live.streamId != streamId) continue;
            // Objects leave the list before their memory goes, so an object that is ending can still be asked.
            nodes.push_back(live.object);
            if (!live.object->TryAddOwner()) nodes.pop_back();
        }
    } catch (...) {
        // Without memory to list them, what has been listed goes.
    }
    for (SharedObjectImpl* const node : nodes) {
        node->DropClientReferences();
        node->RemoveOwner();
    }
}

void AcquireLiveObject(ISharedObject* object) noexcept {
    if (auto* const live = FindLiveObject(object)) live->Acquire();
}

void ReleaseLiveObject(ISharedObject* object) noexcept {
    if (auto* const live = FindLiveObject(object)) live->Release();
}

}  // namespace ZT_PLUGIN
