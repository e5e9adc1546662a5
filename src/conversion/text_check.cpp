#include "conversion/text_check.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

#include "errors/progress.h"
#include "errors/raise.h"
#include "util/escaped_text.h"
#include "util/file_mapper.h"

namespace zentor {

namespace {

// The first control character or backslash; npos when there is none.
std::size_t FindUnescaped(std::string_view text) {
    constexpr std::size_t kBlock = 4096;
    constexpr auto isUnescaped = [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\\'; };
    for (std::size_t begin = 0; begin < text.size(); begin += kBlock) {
        const std::string_view block = text.substr(begin, kBlock);
        // Without a way out of the loop, so that it is done for many bytes at once.
        std::uint8_t found = 0;
        for (const char c : block) {
            found = static_cast<std::uint8_t>(found | (static_cast<unsigned char>(c) < ' ') | (c == '\\'));
        }
        if (found == 0) continue;
        return begin + static_cast<std::size_t>(std::find_if(block.begin(), block.end(), isUnescaped) - block.begin());
    }
    return std::string_view::npos;
}

// The first fault between two offsets. What has been looked at may leave memory.
std::size_t FindFault(const FileMapper& file, std::size_t begin, std::size_t end) {
    constexpr std::size_t kPassedAtOnce = std::size_t{32} << 20;
    const std::string_view text = file.bytes().substr(0, end);
    while (begin < text.size()) {
        const std::size_t found = FindUnescaped(text.substr(begin, kPassedAtOnce));
        if (found == std::string_view::npos) {
            begin += std::min(kPassedAtOnce, text.size() - begin);
            file.Pass(begin);
            ReportProgress();
            continue;
        }
        const std::size_t escape = EscapeLength(text.substr(begin + found));
        if (escape == 0) return begin + found;
        begin += found + escape;
    }
    return std::string_view::npos;
}

[[noreturn]] void RaiseFault(char byte, std::uint64_t offset) {
    Raise({byte == '\\' ? kBackslashInText : kControlCharacterInText, static_cast<std::int64_t>(offset)});
}

}  // namespace

void CheckEscapedTexts(const std::string& documentPath, const std::vector<ZT_PLUGIN::ByteRange>& numberSamples) {
    FileMapper file;
    if (file.Map(documentPath) != MapResult::kMapped) Raise(kFailureOpeningFile);
    const auto check = [&](std::uint64_t begin, std::uint64_t end) {
        const std::size_t at = FindFault(file, static_cast<std::size_t>(begin), static_cast<std::size_t>(end));
        if (at != std::string_view::npos) RaiseFault(file.bytes()[at], at);
    };
    std::uint64_t begin = 0;
    for (const ZT_PLUGIN::ByteRange& samples : numberSamples) {
        check(begin, samples.begin);
        begin = samples.end;
    }
    check(begin, file.Size());
}

}  // namespace zentor
