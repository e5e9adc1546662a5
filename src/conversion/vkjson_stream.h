// The stream through which a host reads or saves a converted document.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "conversion/open_documents.h"
#include "files/document_record.h"
#include "files/file_io.h"
#include "model/shared_object_impl.h"
#include "zentor/zentor.h"

namespace zentor {

// The library's view of a stream.
class IVkjsonStream_I : public IVkjsonStream {
public:
    virtual ~IVkjsonStream_I() = default;
};

// Owned by the driver, whatever a host's reference counting says.
class VkjsonStreamImpl final : public IVkjsonStream_I, public ZT_PLUGIN::SharedObjectImpl {
public:
    // `inputPath` is absolute. Code ZT_FILE_READ when the document is of 4 GiB or more: the interface counts in 32
    // bits.
    VkjsonStreamImpl(std::shared_ptr<DocumentRecord> record, std::string inputPath, OpenDocuments& openDocuments);
    ~VkjsonStreamImpl() override = default;

    std::uint32_t Read(void* buffer, const std::uint32_t* count) noexcept override;
    ZT_Result SaveTo(const char* path) noexcept override;
    const char* DocumentPath() noexcept override { return record_->documentPath.c_str(); }
    std::uint32_t Size() noexcept override { return size_; }
    std::uint32_t Remaining() noexcept override { return remaining_; }
    ZT_Result Rewind() noexcept override;
    void DeletingDestructor(std::uint32_t) noexcept override {}
    void Acquire() noexcept override { SharedObjectImpl::Acquire(); }
    void Release() noexcept override { SharedObjectImpl::Release(); }
    void* GetInternal() noexcept override { return static_cast<IVkjsonStream_I*>(this); }
    void DestroyShared(std::uint32_t) noexcept override { SharedObjectImpl::Release(); }

private:
    void OnUnreferenced() noexcept override {}

    std::shared_ptr<DocumentRecord> record_;  // before the file, so that it is closed when the document is deleted
    std::string inputPath_;
    OpenDocuments& openDocuments_;
    FileCloser document_;
    std::uint32_t size_;
    std::uint32_t remaining_;
};

}  // namespace zentor
