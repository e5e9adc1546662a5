#include "conversion/vkjson_stream.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "conversion/document_copy.h"
#include "errors/host_boundary.h"
#include "errors/raise.h"
#include "files/path_check.h"

namespace zentor {

namespace {

std::uint32_t StreamLength(FileHandle file) {
    const std::uint64_t length = File_IO::Length(file);
    if (length > std::numeric_limits<std::uint32_t>::max()) Raise(kLengthFailure, Quoted("File_IO::Length"));
    return static_cast<std::uint32_t>(length);
}

}  // namespace

VkjsonStreamImpl::VkjsonStreamImpl(std::shared_ptr<DocumentRecord> record, std::string inputPath,
                                   OpenDocuments& openDocuments)
    : record_(std::move(record)),
      inputPath_(std::move(inputPath)),
      openDocuments_(openDocuments),
      document_(File_IO::Open(record_->documentPath, true, Access::kRead)),
      size_(StreamLength(document_.get())),
      remaining_(size_) {}

std::uint32_t VkjsonStreamImpl::Read(void* buffer, const std::uint32_t* count) noexcept {
    std::uint32_t got = 0;
    RunOperation(this, [&] {
        if (buffer == nullptr || count == nullptr) Raise(kInvalidPointer, Quoted("GetVKJSONStream"));
        std::memset(buffer, 0, *count);
        auto* next = static_cast<char*>(buffer);
        // The file layer takes less than 2 GiB at a time.
        for (std::uint32_t wanted = std::min(remaining_, *count); wanted != 0;) {
            const std::uint32_t piece = std::min<std::uint32_t>(wanted, 0x40000000);
            const auto done = static_cast<std::uint32_t>(File_IO::Read(document_.get(), next, piece));
            if (done == 0) break;
            next += done;
            got += done;
            wanted -= done;
            remaining_ -= done;
        }
    });
    return got;
}

ZT_Result VkjsonStreamImpl::SaveTo(const char* path) noexcept {
    return RunOperation(this, [&] {
        CheckPath(path);
        const std::string target = File_IO::AbsolutePath(path);
        if (File_IO::IsSameFile(target, record_->documentPath)) return;
        if (File_IO::IsSameFile(target, inputPath_) || openDocuments_.IsOpen(target)) {
            Raise(kCreateFile, Quoted("File_IO::Create"));
        }
        CopyDocument(record_->documentPath, target);
    });
}

ZT_Result VkjsonStreamImpl::Rewind() noexcept {
    return RunOperation(this, [&] { File_IO::Seek(document_.get(), 0, 0); });
}

}  // namespace zentor
