// The manager object.
#pragma once

#include "conversion/vkjson_streams.h"
#include "entry/open_files.h"
#include "model/shared_object_impl.h"
#include "zentor/zentor.h"

namespace zentor {

// The library's view of the manager.
class IZentor_I : public IZentor {
public:
    virtual ~IZentor_I() = default;
};

// Owned by the process-wide count of CreateZentor_1 calls, whatever a host's reference counting says.
class ZentorImpl final : public IZentor_I, public ZT_PLUGIN::SharedObjectImpl {
public:
    ~ZentorImpl() override = default;

    ZT_Result OpenFile(ISensorFileHandler** handler, const char* inputPath, const char* outputPath) noexcept override;
    ZT_Result CloseFile(ISensorFileHandler** handler) noexcept override;
    ZT_Result ConvertFile(IVkjsonStream** stream, const char* inputPath, std::uint8_t validate) noexcept override;
    ZT_Result ReleaseStream(IVkjsonStream** stream) noexcept override;
    void DeletingDestructor(std::uint32_t) noexcept override {}
    void Acquire() noexcept override { SharedObjectImpl::Acquire(); }
    void Release() noexcept override { SharedObjectImpl::Release(); }
    void* GetInternal() noexcept override { return static_cast<IZentor_I*>(this); }
    void DestroyShared(std::uint32_t) noexcept override { SharedObjectImpl::Release(); }

private:
    void OnUnreferenced() noexcept override {}

    OpenFiles openFiles_;
    VkjsonStreams streams_{openFiles_};
};

}  // namespace zentor
