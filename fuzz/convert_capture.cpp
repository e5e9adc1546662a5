// Fuzzing: whatever the bytes of a capture are, they make a document whose samples can all be read, or are refused.
#include <unistd.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "conversion/bvh/bvh_converter.h"
#include "document.h"
#include "model/stream_state.h"
#include "util/file_io.h"
#include "writer/document_writer.h"

namespace {

using namespace zentor;
using namespace zentor_fuzz;

// Files of this process in the folder for temporary files.
std::string PathFor(const char* name) {
    return File_IO::TempFolder() + "/zentor-fuzz-" + std::to_string(getpid()) + name;
}

std::string ReadFile(const std::string& path) {
    const FileCloser file(File_IO::Open(path, true, Access::kRead));
    std::string bytes(File_IO::Length(file.get()), '\0');
    Require(File_IO::Read(file.get(), bytes.data(), bytes.size()) == bytes.size());
    return bytes;
}

void WriteFile(const std::string& path, std::string_view bytes) {
    File_IO::Create(path);
    const FileCloser file(File_IO::Open(path, true, Access::kReadWrite));
    if (!bytes.empty()) File_IO::Write(file.get(), bytes.data(), bytes.size());
}

// A fault of a capture has its place; the code of a frame time comes without a message.
void RequireRefusal(std::uint32_t code, std::uint32_t expected, std::int64_t offset, std::int64_t line,
                    std::string_view capture) {
    Require(code == expected);
    Require(offset >= 0 && static_cast<std::size_t>(offset) <= capture.size());
    Require(line >= 1 && static_cast<std::size_t>(line) <= capture.size() + 1);
}

// Whether there is a document.
bool Convert(const std::string& input, const std::string& output, std::string_view capture) {
    const std::uint64_t id = ZT_PLUGIN::OpenStream(std::make_unique<DocumentWriter>(output));
    bool converted = false;
    try {
        converted = BVHConverter({input, input, std::to_string(id)}).Convert();
        Require(converted);
    } catch (const ns_sensor::ZT_Exception& failure) {
        RequireRefusal(failure.code(), 1506, failure.extra1(), failure.extra2(), capture);
    } catch (const ZT_PLUGIN::ZT_PluginException& failure) {
        RequireRefusal(failure.code(), 1508, failure.extra1(), failure.extra2(), capture);
    }
    ZT_PLUGIN::CloseStream(id);
    Require(converted == (File_IO::GetFileMode(output) == PathKind::kFile));
    return converted;
}

void CheckDocument(std::string_view bytes) {
    const auto document = ParseDocument(bytes, ParserChoice::kVersion2);
    for (const auto& [id, set] : document->samples.Sets()) {
        if (set.count == 0) continue;
        const auto samples = document->samples.FindRange(bytes, id, *document->timeForm, {0, 1}, {86400, 1}).ReadAll();
        Require(samples.size() == set.count);
    }
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
