#include "conversion/driver.h"

#include <algorithm>
#include <functional>

#include "conversion/format_table.h"
#include "conversion/plugin/plugin_converter.h"
#include "conversion/plugin/plugin_host.h"
#include "conversion/text_check.h"
#include "errors/converter_failure.h"
#include "errors/exception.h"
#include "errors/first_failure.h"
#include "errors/last_exception.h"
#include "errors/notices.h"
#include "errors/progress.h"
#include "errors/raise.h"
#include "files/file_io.h"
#include "files/path_check.h"
#include "format/version.h"
#include "format/words.h"
#include "model/live_objects.h"
#include "model/stream_state.h"
#include "util/file_mapper.h"
#include "util/path_text.h"
#include "writer/document_writer.h"

namespace zentor {

namespace {

// A stream id is open while its converter runs.
class OpenStreamScope {
public:
    OpenStreamScope(const std::string& documentPath, const ContentForm& form,
                    const std::vector<std::string>& parameters)
        : id_(ZT_PLUGIN::OpenStream(std::make_unique<DocumentWriter>(documentPath, form), form, parameters)) {}
    ~OpenStreamScope() {
        ZT_PLUGIN::CloseStream(id_);
        ZT_PLUGIN::ReclaimNodes(id_);  // that a plug-in has forgotten
    }
    OpenStreamScope(const OpenStreamScope&) = delete;
    OpenStreamScope& operator=(const OpenStreamScope&) = delete;

    std::uint64_t Id() const { return id_; }

private:
    std::uint64_t id_;
};

struct FoundConverter {
    std::string identifier;
    std::vector<std::string> parameters;  // that it has
    // Makes the converter for one input.
    std::function<std::unique_ptr<ZT_ConverterHandlerBase>(ConversionInfo info)> make;
    bool mayEscape;  // what it writes; built-in ones do not
};

FoundConverter NativeConverter(const NativeFormat& format) {
    return {format.identifier, {}, format.makeConverter, false};
}

FoundConverter ConverterOf(const std::shared_ptr<ZT_PLUGIN::ZT_ConverterHandler>& plugins,
                           const ZT_PLUGIN::PluginConverter& converter) {
    const auto make = [plugins, &converter](ConversionInfo info) {
        return std::make_unique<ZT_PLUGIN::ZT_ConverterHandlerInstance>(std::move(info), converter);
    };
    return {converter.manifest.identifier, converter.manifest.parameters, make, true};
}

// The converter of an input: a plug-in that insists on it, a built-in one, or any other plug-in. What it gives keeps
// the plug-ins while it is used. When there is none: the failure of the first plug-in that could not say whether it is
// one; what kept plug-ins from being found; else ZT_FORMAT_NOT_SUPPORTED.
FoundConverter FindConverter(const std::string& inputPath) {
    const std::string extension = LowerCaseAscii(ExtensionOf(inputPath));
    const auto plugins = Plugins();
    const NativeFormat* const format = FindConvertibleFormat(extension);
    const LastExceptionScope lastException;
    FirstFailure failure;  // a plug-in that fails does not take the input away from others
    const ZT_PLUGIN::PluginConverter* converter = plugins->FindForced(inputPath, extension, failure);
    if (converter == nullptr && format == nullptr) {
        converter = plugins->FindOther(inputPath, extension, failure);
        if (converter == nullptr) {
            failure.RaiseIfAny();
            plugins->RaiseUnseen();
            Raise(kFileFormatNotSupported);
        }
    }
    if (converter == nullptr) return NativeConverter(*format);
    return ConverterOf(plugins, *converter);
}

// The one that the host asks for, whatever the input is.
FoundConverter FindNamedConverter(const std::string& name) {
    if (const NativeFormat* const format = FindFormatOfConverter(name)) return NativeConverter(*format);
    const auto plugins = Plugins();
    const LastExceptionScope lastException;
    const ZT_PLUGIN::PluginConverter* const converter = plugins->FindCalled(name);
    if (converter == nullptr) Raise(kInvalidPointer, Quoted("ZT_HostOptions.converter"));
    return ConverterOf(plugins, *converter);
}

void CheckParameters(const std::vector<std::string>& parameters, const FoundConverter& converter) {
    for (const std::string& parameter : parameters) {
        const std::size_t end = parameter.find('=');
        if (end == std::string::npos || end == 0) Raise(kInvalidPointer, Quoted("ZT_HostOptions.parameters"));
        const std::string key = parameter.substr(0, end);
        const auto& known = converter.parameters;
        if (std::find(known.begin(), known.end(), key) == known.end()) {
            Raise(kUnknownParameter, converter.identifier, Quoted(key));
        }
    }
}

ContentForm FormOf(const FoundConverter& converter, bool isFaithful) {
    if (!isFaithful) return {};
    return {NumberForm::kShortest, converter.mayEscape ? TextForm::kCompleted : TextForm::kEscaped};
}

void PassOnNotices(std::uint64_t streamId) {
    Notices* const notices = Notices::Current();
    const auto stream = ZT_PLUGIN::FindStream(streamId);
    if (notices == nullptr || stream == nullptr) return;
    for (const ZT_PLUGIN::ConverterNotice& notice : stream->notices) {
        notices->Add(notice.message, {notice.offset, notice.line}, notice.count);
    }
}

// Returns where in the document the samples of numbers stand.
std::vector<ZT_PLUGIN::ByteRange> RunConverter(const FoundConverter& found, const InputFile& input,
                                               const std::string& documentPath, const ConversionOptions& options) {
    const ContentForm form = FormOf(found, options.faithful);
    const OpenStreamScope stream(documentPath, form, options.parameters);
    const auto converter = found.make({input.path, input.name, stream.Id(), form, options.strict, options.anySize});
    const LastExceptionScope lastException;
    ClearLastException();  // a failure may tell its cause by it
    bool converted = false;
    try {
        converted = converter->Convert();
    } catch (const ZT_PLUGIN::ZT_PluginException& failure) {
        RaiseIfEnded();  // whatever the converter has made of it
        RaiseIfRefused();
        RaiseConverterFailure(failure.code(), failure.extra1(), failure.extra2());
    } catch (...) {
        RaiseIfEnded();
        RaiseIfRefused();
        throw;
    }
    RaiseIfEnded();
    if (!converted) Raise(kConversionFailure);
    PassOnNotices(stream.Id());
    return ZT_PLUGIN::FindStream(stream.Id())->Writer().NumberSamples();
}

std::shared_ptr<DocumentRecord> RecordOfDocument(const std::string& path, bool isKnownVersion2) {
    auto record = std::make_shared<DocumentRecord>();
    record->documentPath = path;
    record->isKnownVersion2 = isKnownVersion2;
    return record;
}

// Whether the file already is a vkjson document of version 2, its word in any letter case. Never fails and leaves no
// trace of a failure.
bool IsVkjsonDocument(const std::string& path) noexcept {
    try {
        FileMapper file;
        return file.Map(path) == MapResult::kMapped && BeginsAsVersion2(file.bytes(), LetterCase::kAny);
    } catch (...) {
        return false;
    }
}

// A document that goes to an output is made beside it, so that it only has to be renamed.
PreparedDocument CreateDocumentFor(const InputFile& input, const std::string& outputPath, bool isNew) {
    if (outputPath.empty()) return {CreateTemporaryDocument(), nullptr};
    if (File_IO::IsSameFile(input.path, outputPath)) Raise(kCreateFile, Quoted("File_IO::Create"));
    auto placed = std::make_unique<PlacedFile>(outputPath, isNew);
    auto record = RecordOfDocument(placed->Path(), true);
    return {std::move(record), std::move(placed)};
}

}  // namespace

InputFile CheckInput(const char* inputPath) {
    CheckPath(inputPath);
    if (File_IO::GetFileMode(inputPath) != PathKind::kFile) Raise(kFileNotExist, Quoted(inputPath));
    return {inputPath, File_IO::AbsolutePath(inputPath)};
}

std::string ConversionOptions::Kind() const {
    std::string kind = faithful ? "faithful" : "";
    for (const std::string& part : parameters) kind += '\0' + part;
    return converter.empty() && parameters.empty() ? kind : kind + '\0' + converter;
}

void PreparedDocument::Place() {
    placed->Place();
    record->documentPath = placed->Path();
}

PreparedDocument PrepareInput(const InputFile& input, const std::string& outputPath, const ConversionOptions& options) {
    const bool isNamedDocument = ExtensionOf(input.path) == words::kExtension;
    if (options.converter.empty() && (isNamedDocument || IsVkjsonDocument(input.path))) {
        if (!options.parameters.empty())
            Raise(kUnknownParameter, words::kExtension, Quoted(options.parameters.front()));
        if (!outputPath.empty() && !File_IO::IsSameFile(input.path, outputPath)) {
            CheckTarget(outputPath, options.newOutput);
        }
        return {RecordOfDocument(input.path, !isNamedDocument), nullptr};
    }
    const FoundConverter converter =
        options.converter.empty() ? FindConverter(input.path) : FindNamedConverter(options.converter);
    CheckParameters(options.parameters, converter);
    PreparedDocument document = CreateDocumentFor(input, outputPath, options.newOutput);
    const auto numberSamples = RunConverter(converter, input, document.record->documentPath, options);
    if (options.strict && !options.faithful && converter.mayEscape) {
        CheckEscapedTexts(document.record->documentPath, numberSamples);
    }
    return document;
}

}  // namespace zentor
