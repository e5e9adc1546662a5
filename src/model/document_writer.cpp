#include "model/document_writer.h"

#include <map>
#include <mutex>

#include "errors/exception.h"
#include "zentor/error_codes.h"

namespace ZT_PLUGIN {

namespace {

std::mutex streamsMutex;

std::map<std::uint64_t, std::unique_ptr<IDocumentWriter>>& Streams() {
    static std::map<std::uint64_t, std::unique_ptr<IDocumentWriter>> streams;
    return streams;
}

std::uint64_t lastStreamId = 0;

}  // namespace

std::uint64_t OpenStream(std::unique_ptr<IDocumentWriter> writer) {
    const std::lock_guard lock(streamsMutex);
    Streams()[++lastStreamId] = std::move(writer);
    return lastStreamId;
}

void CloseStream(std::uint64_t streamId) noexcept {
    std::unique_ptr<IDocumentWriter> closed;  // goes outside the lock: it closes a file
    const std::lock_guard lock(streamsMutex);
    const auto found = Streams().find(streamId);
    if (found == Streams().end()) return;
    closed = std::move(found->second);
    Streams().erase(found);
}

IDocumentWriter& WriterOfStream(std::uint64_t streamId) {
    const std::lock_guard lock(streamsMutex);
    const auto found = Streams().find(streamId);
    if (found == Streams().end()) throw ZT_PluginException(ZT_STREAM_NOT_OPEN);
    return *found->second;
}

}  // namespace ZT_PLUGIN
