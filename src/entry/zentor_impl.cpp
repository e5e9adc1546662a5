#include "entry/zentor_impl.h"

#include "conversion/input_checks.h"
#include "errors/host_boundary.h"
#include "errors/raise.h"

namespace zentor {

ZT_Result ZentorImpl::OpenFile(ISensorFileHandler** handler, const char* inputPath, const char* outputPath) noexcept {
    return RunAtBoundary(ErrorContext(), [&] {
        if (handler == nullptr) Raise(kInvalidPointer, Quoted("ISensorFileHandler"));
        *handler = nullptr;
        CheckInput(inputPath);
        if (outputPath != nullptr && *outputPath != '\0') CheckInputFilePath(outputPath);
        Raise(kCannotCreateParserObject);
    });
}

ZT_Result ZentorImpl::CloseFile(ISensorFileHandler** handler) noexcept {
    return RunAtBoundary(ErrorContext(), [&] {
        if (handler == nullptr || *handler == nullptr) Raise(kInvalidPointer, Quoted("ISensorFileHandler"));
        Raise(kNoFileOpened);  // OpenFile has handed out none
    });
}

ZT_Result ZentorImpl::ConvertFile(IVkjsonStream** stream, const char* inputPath, std::uint8_t validate) noexcept {
    return RunAtBoundary(ErrorContext(), [&] {
        if (stream == nullptr) Raise(kInvalidPointer, Quoted("IZentor"));
        *stream = nullptr;
        *stream = driver_.ConvertFile(inputPath, validate != 0);
    });
}

ZT_Result ZentorImpl::ReleaseStream(IVkjsonStream** stream) noexcept {
    return RunAtBoundary(ErrorContext(), [&] {
        if (stream == nullptr || *stream == nullptr) Raise(kInvalidPointer, Quoted("IVkjsonStream"));
        driver_.ReleaseStream(*stream);
        *stream = nullptr;
    });
}

}  // namespace zentor
