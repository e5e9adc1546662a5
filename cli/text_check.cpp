#include "text_check.h"

#include <algorithm>
#include <string_view>

#include "util/file_mapper.h"
#include "util/os_file.h"

namespace zentor_cli {

namespace {

constexpr bool NeedsEscape(char c) { return (c >= '\0' && c < ' ') || c == '\\'; }

std::size_t FindUnescaped(std::string_view text) {
    constexpr std::size_t kBlock = 4096;
    for (std::size_t begin = 0; begin < text.size(); begin += kBlock) {
        const std::string_view block = text.substr(begin, kBlock);
        // Without a way out of the loop, so that it is done for many bytes at once.
        bool found = false;
        for (const char c : block) found = found | NeedsEscape(c);
        if (found) {
            return begin +
                   static_cast<std::size_t>(std::find_if(block.begin(), block.end(), &NeedsEscape) - block.begin());
        }
    }
    return std::string_view::npos;
}

}  // namespace

void CheckTexts(Stream& stream, const std::string& inputPath) {
    bool isDocument = false;
    zentor::os::IsSameFile(inputPath, stream->DocumentPath(), isDocument);
    if (isDocument) return;
    zentor::FileMapper file;
    if (file.Map(stream->DocumentPath()) != zentor::MapResult::kMapped) {
        throw LibraryFailure("the document cannot be read back");
    }
    const std::size_t at = FindUnescaped(file.bytes());
    if (at == std::string_view::npos) return;
    const char* const what = file.bytes()[at] == '\\' ? "backslash" : "control character";
    throw LibraryFailure(std::string("the document is not valid: a text has a ") + what + " (at byte " +
                         std::to_string(at) + ")");
}

}  // namespace zentor_cli
