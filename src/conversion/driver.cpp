#include "conversion/driver.h"

#include "conversion/format_table.h"
#include "conversion/input_checks.h"
#include "conversion/output_placement.h"
#include "errors/exception.h"
#include "errors/raise.h"
#include "model/stream_state.h"
#include "writer/document_writer.h"

namespace zentor {

namespace {

// A stream id is open while its converter runs.
class OpenStreamScope {
public:
    explicit OpenStreamScope(const std::string& documentPath)
        : id_(ZT_PLUGIN::OpenStream(std::make_unique<DocumentWriter>(documentPath))) {}
    ~OpenStreamScope() { ZT_PLUGIN::CloseStream(id_); }
    OpenStreamScope(const OpenStreamScope&) = delete;
    OpenStreamScope& operator=(const OpenStreamScope&) = delete;

    std::string Key() const { return std::to_string(id_); }

private:
    std::uint64_t id_;
};

void RunConverter(const NativeFormat& format, const std::string& inputPath, const std::string& originalName,
                  const std::string& documentPath) {
    const OpenStreamScope stream(documentPath);
    const auto converter = format.makeConverter({inputPath, originalName, stream.Key()});
    bool converted = false;
    try {
        converted = converter->Convert();
    } catch (const ZT_PLUGIN::ZT_PluginException& failure) {
        Raise({failure.code(), kConverterFailure, failure.extra1(), failure.extra2()});
    }
    if (!converted) Raise(kConversionFailure);
}

std::shared_ptr<DocumentRecord> RecordOfDocument(const std::string& path, bool isKnownVersion2) {
    auto record = std::make_shared<DocumentRecord>();
    record->documentPath = path;
    record->isKnownVersion2 = isKnownVersion2;
    return record;
}

// A document that goes to an output is made beside it, so that it only has to be renamed.
std::shared_ptr<DocumentRecord> CreateDocumentFor(const InputFile& input, const std::string& outputPath) {
    if (outputPath.empty()) return CreateTemporaryDocument(File_IO::TempFolder(), true);
    if (File_IO::IsSameFile(input.path, outputPath)) Raise(kCreateFile, Quoted("File_IO::Create"));
    return CreateTemporaryDocument(CheckOutput(outputPath), false);
}

}  // namespace

InputFile CheckInput(const char* inputPath) {
    CheckInputFilePath(inputPath);
    if (File_IO::GetFileMode(inputPath) != PathKind::kFile) Raise(kFileNotExist, Quoted(inputPath));
    return {inputPath, File_IO::AbsolutePath(inputPath)};
}

std::shared_ptr<DocumentRecord> PrepareInput(const InputFile& input, const std::string& outputPath) {
    const std::string extension = ExtensionOf(input.path);
    const bool isNamedDocument = extension == "vkjson";
    if (isNamedDocument || IsVkjsonDocument(input.path)) {
        if (!outputPath.empty() && !File_IO::IsSameFile(input.path, outputPath)) CheckOutput(outputPath);
        return RecordOfDocument(input.path, !isNamedDocument);
    }
    const NativeFormat* format = FindConvertibleFormat(LowerCaseAscii(extension));
    if (format == nullptr) Raise(kFileFormatNotSupported);
    auto record = CreateDocumentFor(input, outputPath);
    RunConverter(*format, input.path, input.name, record->documentPath);
    return record;
}

IVkjsonStream* ConversionDriver::MakeStream(std::shared_ptr<DocumentRecord> record, const std::string& inputPath) {
    auto stream = std::make_unique<VkjsonStreamImpl>(std::move(record), inputPath, openDocuments_);
    IVkjsonStream* const handle = stream.get();
    const std::lock_guard lock(streamsMutex_);
    streams_.emplace(handle, std::move(stream));
    return handle;
}

void ConversionDriver::ReleaseStream(IVkjsonStream* stream) {
    std::unique_ptr<VkjsonStreamImpl> released;  // goes outside the lock: it closes and deletes files
    const std::lock_guard lock(streamsMutex_);
    if (streams_.empty()) Raise(kNoStreamCreated);
    const auto found = streams_.find(stream);
    if (found == streams_.end()) Raise(kInvalidStream);
    released = std::move(found->second);
    streams_.erase(found);
}

}  // namespace zentor
