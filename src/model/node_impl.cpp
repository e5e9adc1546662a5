#include "model/node_impl.h"

#include <algorithm>

#include "format/match_name.h"

namespace ZT_PLUGIN {

VkjsonNodeImpl::VkjsonNodeImpl(std::uint64_t streamId) : streamId_(streamId), stream_(FindStream(streamId)) {
    if (!stream_) throw ZT_PluginException(ZT_STREAM_NOT_OPEN);
}

VkjsonNodeImpl::VkjsonNodeImpl(std::uint64_t streamId, std::string_view matchName, std::string_view displayName)
    : VkjsonNodeImpl(streamId) {
    CheckMatchName(matchName);
    matchName_ = matchName;
    displayName_ = displayName;
}

VkjsonNodeImpl::~VkjsonNodeImpl() {
    for (const void* address : addresses_) {
        if (address != nullptr) RemoveLiveObject(address);
    }
}

void VkjsonNodeImpl::CheckMatchName(std::string_view matchName) {
    if (matchName.empty() || !zentor::IsMatchName(matchName)) throw ZT_PluginException(ZT_INVALID_NAME);
}

void VkjsonNodeImpl::Publish(const void* interfaceAddress) {
    AddLiveObject(interfaceAddress, this, streamId_);
    *std::find(addresses_.begin(), addresses_.end(), nullptr) = interfaceAddress;
}

}  // namespace ZT_PLUGIN
