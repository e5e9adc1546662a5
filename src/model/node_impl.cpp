#include "model/node_impl.h"

#include <algorithm>

namespace ZT_PLUGIN {

VkjsonNodeImpl::~VkjsonNodeImpl() {
    for (const void* address : addresses_) {
        if (address != nullptr) RemoveLiveObject(address);
    }
}

void VkjsonNodeImpl::Publish(const void* interfaceAddress) {
    AddLiveObject(interfaceAddress, this, streamId_);
    *std::find(addresses_.begin(), addresses_.end(), nullptr) = interfaceAddress;
}

}  // namespace ZT_PLUGIN
