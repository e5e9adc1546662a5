#include "model/live_objects.h"

#include <mutex>
#include <unordered_map>
#include <vector>

#include "model/node_impl.h"

namespace ZT_PLUGIN {

namespace {

std::mutex registryMutex;

std::unordered_map<const void*, SharedObjectImpl*>& Registry() {
    static std::unordered_map<const void*, SharedObjectImpl*> registry;
    return registry;
}

}  // namespace

void AddLiveObject(const void* address, SharedObjectImpl* object) {
    const std::lock_guard lock(registryMutex);
    Registry()[address] = object;
}

void RemoveLiveObject(const void* address) noexcept {
    const std::lock_guard lock(registryMutex);
    Registry().erase(address);
}

SharedObjectImpl* FindLiveObject(const void* address) noexcept {
    const std::lock_guard lock(registryMutex);
    const auto found = Registry().find(address);
    return found == Registry().end() ? nullptr : found->second;
}

void ReclaimNodes(std::uint64_t streamId) noexcept {
    std::vector<Owner<VkjsonNodeImpl>> nodes;  // go outside the lock, which their ends take
    try {
        const std::lock_guard lock(registryMutex);
        for (const auto& [address, object] : Registry()) {
            auto* const node = dynamic_cast<VkjsonNodeImpl*>(object);
            if (node != nullptr && node->StreamId() == streamId) nodes.push_back(MakeOwner(node));
        }
    } catch (...) {
        // Without memory to list them, what has been listed goes.
    }
    for (const auto& node : nodes) node->DropClientReferences();
}

void AcquireLiveObject(ISharedObject* object) noexcept {
    if (auto* const live = FindLiveObject(object)) live->Acquire();
}

void ReleaseLiveObject(ISharedObject* object) noexcept {
    if (auto* const live = FindLiveObject(object)) live->Release();
}

}  // namespace ZT_PLUGIN
