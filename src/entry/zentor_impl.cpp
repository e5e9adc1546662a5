#include "entry/zentor_impl.h"

#include "conversion/driver.h"
#include "errors/host_boundary.h"
#include "errors/host_tables.h"
#include "errors/raise.h"
#include "files/file_io.h"
#include "files/path_check.h"

namespace zentor {

namespace {

ReadOptions HostReadOptions() {
    const ZT_HostOptions options = ReadHostOptions();
    return {options.privateCopy != 0, options.checkSamples != 0};
}

}  // namespace

ZT_Result ZentorImpl::OpenFile(ISensorFileHandler** handler, const char* inputPath, const char* outputPath) noexcept {
    return RunOperation(this, [&] {
        if (handler == nullptr) Raise(kInvalidPointer, Quoted("ISensorFileHandler"));
        *handler = nullptr;
        const InputFile input = CheckInput(inputPath);
        std::string output;
        if (outputPath != nullptr && *outputPath != '\0') {
            CheckPath(outputPath);
            output = File_IO::ResolveLinks(File_IO::AbsolutePath(outputPath));
        }
        *handler = openFiles_.Open(input, output, HostReadOptions());
    });
}

ZT_Result ZentorImpl::CloseFile(ISensorFileHandler** handler) noexcept {
    return RunOperation(this, [&] {
        if (handler == nullptr || *handler == nullptr) Raise(kInvalidPointer, Quoted("ISensorFileHandler"));
        if (openFiles_.Close(*handler)) *handler = nullptr;
    });
}

ZT_Result ZentorImpl::ConvertFile(IVkjsonStream** stream, const char* inputPath, std::uint8_t validate) noexcept {
    return RunOperation(this, [&] {
        if (stream == nullptr) Raise(kInvalidPointer, Quoted("IZentor"));
        *stream = nullptr;
        const InputFile input = CheckInput(inputPath);
        const ReadOptions options{false, HostReadOptions().checkSamples};
        std::shared_ptr<DocumentRecord> record = PrepareInput(input, {});
        if (validate != 0) SensorFileHandlerImpl(input.path, record, options);
        *stream = streams_.Make(std::move(record), input.path);
    });
}

ZT_Result ZentorImpl::ReleaseStream(IVkjsonStream** stream) noexcept {
    return RunOperation(this, [&] {
        if (stream == nullptr || *stream == nullptr) Raise(kInvalidPointer, Quoted("IVkjsonStream"));
        streams_.Release(*stream);
        *stream = nullptr;
    });
}

}  // namespace zentor
