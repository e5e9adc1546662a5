#include "entry/zentor_impl.h"

#include "conversion/driver.h"
#include "errors/host_boundary.h"
#include "errors/host_tables.h"
#include "errors/notices.h"
#include "errors/progress.h"
#include "errors/raise.h"
#include "files/file_io.h"
#include "files/path_check.h"

namespace zentor {

namespace {

OpenOptions OptionsOf(const ZT_HostOptions& host) {
    OpenOptions options;
    options.read.privateCopy = host.privateCopy != 0;
    options.read.checkSamples = host.checkSamples != 0;
    ConversionOptions& conversion = options.conversion;
    conversion.strict = host.strict != 0;
    conversion.newOutput = host.newOutput != 0;
    conversion.faithful = host.faithful != 0;
    conversion.anySize = host.anySize != 0;
    if (host.converter != nullptr) conversion.converter = host.converter;
    for (const char* const* parameter = host.parameters; parameter != nullptr && *parameter != nullptr; ++parameter) {
        conversion.parameters.emplace_back(*parameter);
    }
    return options;
}

}  // namespace

ZT_Result ZentorImpl::OpenFile(ISensorFileHandler** handler, const char* inputPath, const char* outputPath) noexcept {
    return RunOperation(this, [&] {
        if (handler == nullptr) Raise(kInvalidPointer, Quoted("ISensorFileHandler"));
        *handler = nullptr;
        Progress progress;
        Notices notices;
        const InputFile input = CheckInput(inputPath);
        std::string output;
        if (outputPath != nullptr && *outputPath != '\0') {
            CheckPath(outputPath);
            output = File_IO::ResolveLinks(File_IO::AbsolutePath(outputPath));
        }
        const ZT_HostOptions host = ReadHostOptions();
        const OpenOptions options = OptionsOf(host);
        if (host.unread != 0 && !output.empty()) {
            openFiles_.Place(input, output, options.conversion);
        } else {
            *handler = openFiles_.Open(input, output, options);
        }
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
        Progress progress;
        Notices notices;
        const InputFile input = CheckInput(inputPath);
        OpenOptions options = OptionsOf(ReadHostOptions());
        options.read.privateCopy = false;
        std::shared_ptr<DocumentRecord> record = PrepareInput(input, {}, options.conversion).record;
        BeginStep(kDocumentMade, 1, File_IO::SizeOf(record->documentPath));
        if (validate != 0) SensorFileHandlerImpl(input.path, record, options.read);
        progress.Finish();
        notices.Deliver();
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
