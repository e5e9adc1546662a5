// What all nodes have in common.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "model/live_objects.h"

namespace ZT_PLUGIN {

// A node belongs to one stream (one document), has two names and is attached at most once.
class VkjsonNodeImpl : public virtual SharedObjectImpl {
public:
    std::uint64_t StreamId() const { return streamId_; }
    const std::string& MatchNameText() const { return matchName_; }
    const std::string& DisplayNameText() const { return displayName_; }
    bool IsAttached() const { return attached_; }
    void MarkAttached() { attached_ = true; }

protected:
    VkjsonNodeImpl(std::uint64_t streamId, std::string_view matchName, std::string_view displayName)
        : streamId_(streamId), matchName_(matchName), displayName_(displayName) {}
    ~VkjsonNodeImpl() override;

    // Makes the node known under the address of one of its interfaces.
    void Publish(const void* interfaceAddress);
    void SetMatchNameText(std::string_view matchName) { matchName_ = matchName; }
    void SetDisplayNameText(std::string_view displayName) { displayName_ = displayName; }

private:
    std::uint64_t streamId_;
    std::string matchName_;
    std::string displayName_;
    bool attached_ = false;
    std::array<const void*, 3> addresses_{};
};

// Text as clients pass it: null counts as empty.
inline std::string_view TextOrEmpty(const char* text) { return text == nullptr ? "" : text; }

}  // namespace ZT_PLUGIN
