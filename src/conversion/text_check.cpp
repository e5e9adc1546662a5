#include "conversion/text_check.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

#include "errors/raise.h"
#include "util/file_mapper.h"

namespace zentor {

namespace {

constexpr bool NeedsEscape(char c) { return static_cast<unsigned char>(c) < ' ' || c == '\\'; }

// From an offset on. What has been looked at may leave memory.
std::size_t FindUnescaped(const FileMapper& file, std::size_t begin) {
    constexpr std::size_t kBlock = 4096;
    constexpr std::size_t kPassedAtOnce = std::size_t{32} << 20;
    const std::string_view text = file.bytes();
    for (std::size_t end = begin + kPassedAtOnce; begin < text.size(); begin += kBlock) {
        if (begin >= end) {
            file.Pass(begin);
            end += kPassedAtOnce;
        }
        const std::string_view block = text.substr(begin, kBlock);
        // Without a way out of the loop, so that it is done for many bytes at once.
        std::uint8_t found = 0;
        for (const char c : block) {
            found = static_cast<std::uint8_t>(found | (static_cast<unsigned char>(c) < ' ') | (c == '\\'));
        }
        if (found != 0) {
            return begin +
                   static_cast<std::size_t>(std::find_if(block.begin(), block.end(), &NeedsEscape) - block.begin());
        }
    }
    return std::string_view::npos;
}

// The length of the escape that a text begins with; 0 for none.
std::size_t EscapeLength(std::string_view text) {
    constexpr std::string_view kHexadecimal = "0123456789abcdefABCDEF";
    constexpr std::size_t kUnicodeEscape = 6;
    if (text.size() < 2 || text[0] != '\\') return 0;
    if (std::string_view("\"\\/bfnrt").find(text[1]) != std::string_view::npos) return 2;
    if (text[1] != 'u' || text.size() < kUnicodeEscape) return 0;
    const std::string_view digits = text.substr(2, kUnicodeEscape - 2);
    return digits.find_first_not_of(kHexadecimal) == std::string_view::npos ? kUnicodeEscape : 0;
}

// The first character that a document cannot hold as it is.
std::size_t FindFault(const FileMapper& file, bool mayEscape) {
    for (std::size_t begin = 0;;) {
        const std::size_t found = FindUnescaped(file, begin);
        if (found == std::string_view::npos) return found;
        const std::size_t escape = mayEscape ? EscapeLength(file.bytes().substr(found)) : 0;
        if (escape == 0) return found;
        begin = found + escape;
    }
}

}  // namespace

void CheckTexts(const std::string& documentPath, bool mayEscape) {
    FileMapper file;
    if (file.Map(documentPath) != MapResult::kMapped) Raise(kFailureOpeningFile);
    const std::size_t at = FindFault(file, mayEscape);
    if (at == std::string_view::npos) return;
    Raise({file.bytes()[at] == '\\' ? kBackslashInText : kControlCharacterInText, static_cast<std::int64_t>(at)});
}

}  // namespace zentor
