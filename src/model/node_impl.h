// What all nodes have in common.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "model/live_objects.h"
#include "model/stream_state.h"

namespace ZT_PLUGIN {

// A node belongs to one stream (one document), has two names and is attached at most once.
//
// Making one fails with ZT_STREAM_NOT_OPEN when the stream is not open, with ZT_INVALID_NAME when the match name is
// none that a document is written with: one to any number of letters and digits, not beginning with a digit.
class VkjsonNodeImpl : public virtual SharedObjectImpl {
public:
    std::uint64_t StreamId() const { return streamId_; }
    const std::string& MatchNameText() const { return matchName_; }
    const std::string& DisplayNameText() const { return displayName_; }
    bool IsAttached() const { return attached_; }
    void MarkAttached() { attached_ = true; }

protected:
    // Without names yet.
    explicit VkjsonNodeImpl(std::uint64_t streamId);
    VkjsonNodeImpl(std::uint64_t streamId, std::string_view matchName, std::string_view displayName);
    ~VkjsonNodeImpl() override;

    StreamState& Stream() const { return *stream_; }
    // Makes the node known under the address of one of its interfaces.
    void Publish(const void* interfaceAddress);
    // Code ZT_INVALID_NAME.
    static void CheckMatchName(std::string_view matchName);
    void SetMatchNameText(std::string_view matchName) { matchName_ = matchName; }
    void SetDisplayNameText(std::string_view displayName) { displayName_ = displayName; }

private:
    std::uint64_t streamId_;
    std::shared_ptr<StreamState> stream_;  // never null
    std::string matchName_;
    std::string displayName_;
    bool attached_ = false;
    std::array<const void*, 3> addresses_{};
};

// Text as clients pass it: null counts as empty.
inline std::string_view TextOrEmpty(const char* text) { return text == nullptr ? "" : text; }

}  // namespace ZT_PLUGIN
