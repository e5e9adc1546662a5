// Fuzzing: whatever the bytes of a table are, the plug-in for recordings makes a document that the library reads, every
// sample of it, or refuses the table with a reason.
#include <cstdint>
#include <string>
#include <string_view>

#include "conversion/plugin/services.h"
#include "files.h"
#include "model/live_objects.h"
#include "model/stream_state.h"
#include "open_text.h"
#include "writer/document_writer.h"

ZT_PLUGIN_EXPORT void InitializePlugin(const char*, const ZT_PLUGIN::ZT_PluginServices*,
                                       ZT_PLUGIN::ZT_PluginEntryPoints*, ZT_ErrorRecord*);

namespace {

using namespace zentor;
using namespace zentor_fuzz;

const ZT_PLUGIN::ZT_PluginEntryPoints& EntryPoints() {
    static const ZT_PLUGIN::ZT_PluginEntryPoints entryPoints = [] {
        ZT_PLUGIN::ZT_PluginEntryPoints filled{sizeof filled, 1, nullptr, nullptr, nullptr, nullptr, nullptr};
        ZT_ErrorRecord error{0, 0, -1, -1};
        InitializePlugin("org.zentor.series", &PluginServices(), &filled, &error);
        Require(error.code == 0);
        return filled;
    }();
    return entryPoints;
}

// With parameters that the first byte chooses.
std::vector<std::string> Parameters(std::uint8_t choice) {
    static const std::vector<std::string> kChoices[] = {{},
                                                        {"rate=30000/1001"},
                                                        {"header=none"},
                                                        {"dates=mdy"},
                                                        {"time=1", "delimiter=blank"},
                                                        {"header=2"},
                                                        {"decimal=comma", "delimiter=;"},
                                                        {"encoding=windows-1252"}};
    return kChoices[choice % std::size(kChoices)];
}

bool Convert(const std::string& input, const std::string& output, std::uint8_t choice) {
    const ContentForm form = choice & 0x80 ? ContentForm{NumberForm::kShortest, TextForm::kCompleted} : ContentForm{};
    const std::uint64_t id =
        ZT_PLUGIN::OpenStream(std::make_unique<DocumentWriter>(output, form), form, Parameters(choice));
    void* session = nullptr;
    std::uint8_t converted = 0;
    ZT_ErrorRecord error{0, 0, -1, -1};
    EntryPoints().initializeSession("org.zentor.series", "org.zentor.series", input.c_str(), id, &session, &error);
    Require(error.code == 0);
    EntryPoints().convert(session, &converted, &error);
    const auto stream = ZT_PLUGIN::FindStream(id);
    if (converted == 0) Require(error.code == ZT_CONVERSION && !stream->reason.empty());
    ZT_PLUGIN::CloseStream(id);
    ZT_PLUGIN::ReclaimNodes(id);
    return converted != 0;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::string input = PathFor(".csv");
    static const std::string output = PathFor(".vkjson");
    if (size == 0) return 0;
    WriteFile(input, {reinterpret_cast<const char*>(data) + 1, size - 1});
    if (Convert(input, output, data[0])) {
        const std::string bytes = ReadFile(output);
        zentor_test::OpenText(bytes, ParserChoice::kVersion2).queries().CheckSamples();
        File_IO::Delete(output);
    } else {
        Require(File_IO::GetFileMode(output) != PathKind::kFile);
    }
    File_IO::Delete(input);
    return 0;
}
