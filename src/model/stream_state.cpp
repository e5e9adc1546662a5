#include "model/stream_state.h"

#include <algorithm>
#include <map>
#include <mutex>

namespace ZT_PLUGIN {

namespace {

std::mutex streamsMutex;

std::map<std::uint64_t, std::shared_ptr<StreamState>>& Streams() {
    static std::map<std::uint64_t, std::shared_ptr<StreamState>> streams;
    return streams;
}

std::uint64_t lastStreamId = 0;

}  // namespace

// A part for each node of the document, so that many nodes take no more memory than a few.
void StreamState::CountDynamicNodes(bool isNew) noexcept {
    constexpr std::size_t kAllBuffers = std::size_t{64} << 20;
    constexpr std::size_t kSmallestBuffer = 0x1000;
    dynamicNodes = isNew ? dynamicNodes + 1 : dynamicNodes - 1;
    const std::size_t part = kAllBuffers / std::max<std::size_t>(dynamicNodes, 1);
    sampleBufferLimit = std::clamp(part, kSmallestBuffer, kSampleBufferLimit);
}

std::uint64_t OpenStream(std::unique_ptr<IDocumentWriter> writer, const zentor::ContentForm& form,
                         std::vector<std::string> parameters) {
    auto state = std::make_shared<StreamState>();
    state->writer = std::move(writer);
    state->form = form;
    state->parameters = std::move(parameters);
    const std::lock_guard lock(streamsMutex);
    Streams()[++lastStreamId] = std::move(state);
    return lastStreamId;
}

void CloseStream(std::uint64_t streamId) noexcept {
    std::unique_ptr<IDocumentWriter> closed;  // goes outside the lock: it closes a file
    const std::lock_guard lock(streamsMutex);
    const auto found = Streams().find(streamId);
    if (found == Streams().end()) return;
    closed = std::move(found->second->writer);
    found->second->spill.Close();
    Streams().erase(found);
}

std::shared_ptr<StreamState> FindStream(std::uint64_t streamId) {
    const std::lock_guard lock(streamsMutex);
    const auto found = Streams().find(streamId);
    return found == Streams().end() ? nullptr : found->second;
}

}  // namespace ZT_PLUGIN
