#include "conversion/vkjson_streams.h"

#include "errors/call_scope.h"
#include "errors/raise.h"

namespace zentor {

IVkjsonStream* VkjsonStreams::Make(std::shared_ptr<DocumentRecord> record, const std::string& inputPath) {
    auto stream = std::make_unique<VkjsonStreamImpl>(std::move(record), inputPath, openDocuments_);
    IVkjsonStream* const handle = stream.get();
    const std::lock_guard lock(streamsMutex_);
    streams_.emplace(handle, std::move(stream));
    return handle;
}

void VkjsonStreams::Release(IVkjsonStream* stream) {
    std::unique_ptr<VkjsonStreamImpl> released;  // goes outside the lock: it closes and deletes files
    const std::lock_guard lock(streamsMutex_);
    if (streams_.empty()) Raise(kNoStreamCreated);
    const auto found = streams_.find(stream);
    if (found == streams_.end()) Raise(kInvalidStream);
    if (CallScope::IsIn(found->second.get())) Raise(kInvalidPointer, Quoted("IVkjsonStream"));
    released = std::move(found->second);
    streams_.erase(found);
}

}  // namespace zentor
