// Fuzzing: whatever the bytes of a capture are, they make a document whose samples can all be read, or are refused.
#include <cstdint>
#include <string>
#include <string_view>

#include "conversion/bvh/bvh_converter.h"
#include "files.h"
#include "model/stream_state.h"
#include "open_text.h"
#include "writer/document_writer.h"

namespace {

using namespace zentor;
using namespace zentor_fuzz;

// Whether there is a document.
bool Convert(const std::string& input, const std::string& output, std::string_view capture) {
    const std::uint64_t id = ZT_PLUGIN::OpenStream(std::make_unique<DocumentWriter>(output));
    bool converted = false;
    try {
        converted = BVHConverter({input, input, id}).Convert();
        Require(converted);
    } catch (const ns_sensor::ZT_Exception& failure) {
        RequireRefusal(failure, 1506, capture);
    } catch (const ZT_PLUGIN::ZT_PluginException& failure) {  // of a frame time
        RequireRefusal(failure, 1508, capture);
    }
    ZT_PLUGIN::CloseStream(id);
    Require(converted == (File_IO::GetFileMode(output) == PathKind::kFile));
    return converted;
}

void CheckDocument(std::string_view bytes) {
    const zentor_test::OpenText document(bytes, ParserChoice::kVersion2);
    document.ForEachDynamic([&](NodeNumber node) {
        const std::uint64_t count = document.Dynamic(node).sampleCount;
        if (count == 0) return;
        Require(document.queries().SamplesBetween(node, {0, 1}, {86400, 1}).ReadAll().size() == count);
    });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::string input = PathFor(".bvh");
    static const std::string output = PathFor(".vkjson");
    const std::string_view capture(reinterpret_cast<const char*>(data), size);
    WriteFile(input, capture);
    if (Convert(input, output, capture)) {
        // Names go into documents byte for byte, and these two make one that cannot be read.
        const bool isReadable = capture.find_first_of("\"\\") == std::string_view::npos;
        if (isReadable) CheckDocument(ReadFile(output));
        File_IO::Delete(output);
    }
    File_IO::Delete(input);
    return 0;
}
