#include "conversion/plugin/plugin_converter.h"

#include "errors/converter_failure.h"
#include "errors/last_exception.h"
#include "errors/notices.h"
#include "errors/raise.h"
#include "errors/trace.h"
#include "model/stream_state.h"

namespace ZT_PLUGIN {

using namespace zentor;

namespace {

// The library's own failure that a module's code stands for, if that is what it is. The host gets the code alone.
void TraceCause(std::uint32_t code) {
    const auto last = GetLastException();
    if (last != nullptr && last->code + kConvertingSideOffset == code) Trace(last->message);
}

// Before the failure itself, as its text is the library's own.
void TellReason(const StreamState* stream, const ZT_ErrorRecord& failure) {
    if (stream != nullptr && !stream->reason.empty()) {
        zentor::TellReason(stream->reason, {failure.extra1, failure.extra2});
    }
}

}  // namespace

bool ZT_ConverterHandlerInstance::Convert() {
    const ConverterManifest& manifest = converter_.manifest;
    const ZT_PluginEntryPoints& entryPoints = converter_.module->EntryPoints();
    const std::uint64_t streamId = Info().streamId;
    void* session = nullptr;
    const ZT_ErrorRecord opened = CallModule([&](ZT_ErrorRecord* error) {
        entryPoints.initializeSession(converter_.module->Identifier().c_str(), manifest.identifier.c_str(),
                                      Info().inputPath.c_str(), streamId, &session, error);
    });
    if (opened.code != 0) {
        Raise({opened.code, kInitializeSessionFailed, opened.extra1, opened.extra2}, manifest.name,
              manifest.identifier);
    }
    std::uint8_t converted = 0;
    const ZT_ErrorRecord done =
        CallModule([&](ZT_ErrorRecord* error) { entryPoints.convert(session, &converted, error); });
    const auto stream = FindStream(streamId);
    if (done.code != 0) {
        TraceCause(done.code);
        TellReason(stream.get(), done);
        Raise({done.code, kPluginConverter, done.extra1, done.extra2}, manifest.name, manifest.identifier);
    }
    const bool isWritten = stream && stream->writer && stream->writer->IsFinished();
    if (converted == 0 || !isWritten) {
        TellReason(stream.get(), done);
        Raise(kPluginConverter, manifest.name, manifest.identifier);
    }
    return true;
}

}  // namespace ZT_PLUGIN
