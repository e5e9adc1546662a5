// The streams that a manager has handed out.
#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <string>

#include "conversion/vkjson_stream.h"

namespace zentor {

// Thread-safe.
class VkjsonStreams {
public:
    explicit VkjsonStreams(OpenDocuments& openDocuments) : openDocuments_(openDocuments) {}

    // Makes a stream of the document that stands for the input at `inputPath`, which is absolute. Code ZT_FILE_READ.
    IVkjsonStream* Make(std::shared_ptr<DocumentRecord> record, const std::string& inputPath);
    // Destroys a stream. Codes ZT_INVALID_POINTER (an operation of it is calling this thread), ZT_NO_STREAM_CREATED
    // (there are none), ZT_INVALID_STREAM (not one of these).
    void Release(IVkjsonStream* stream);

private:
    OpenDocuments& openDocuments_;
    std::mutex streamsMutex_;
    std::map<IVkjsonStream*, std::unique_ptr<VkjsonStreamImpl>> streams_;
};

}  // namespace zentor
