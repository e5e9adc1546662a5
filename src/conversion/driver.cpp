#include "conversion/driver.h"

#include "conversion/format_table.h"
#include "conversion/input_checks.h"
#include "errors/exception.h"
#include "errors/raise.h"
#include "model/document_writer.h"
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

// The document that stands for an input: the input itself, or a temporary document that a converter makes now.
std::shared_ptr<DocumentRecord> PrepareInput(const std::string& inputPath, const std::string& originalName) {
    const std::string extension = ExtensionOf(inputPath);
    if (extension == "vkjson" || IsVkjsonDocument(inputPath)) {
        auto record = std::make_shared<DocumentRecord>();
        record->documentPath = inputPath;
        return record;
    }
    const NativeFormat* format = FindConvertibleFormat(LowerCaseAscii(extension));
    if (format == nullptr) Raise(kFileFormatNotSupported);
    auto record = CreateTemporaryDocument(File_IO::TempFolder());
    RunConverter(*format, inputPath, originalName, record->documentPath);
    return record;
}

}  // namespace

void CheckInput(const char* inputPath) {
    CheckInputFilePath(inputPath);
    if (File_IO::GetFileMode(inputPath) != PathKind::kFile) Raise(kFileNotExist, Quoted(inputPath));
}

IVkjsonStream* ConversionDriver::ConvertFile(const char* inputPath, bool validate) {
    CheckInput(inputPath);
    const std::string absolutePath = File_IO::AbsolutePath(inputPath);
    auto record = PrepareInput(absolutePath, inputPath);
    if (validate) Raise(kCannotCreateParserObject);
    auto stream = std::make_unique<VkjsonStreamImpl>(std::move(record), absolutePath);
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
