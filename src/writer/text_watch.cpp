#include "writer/text_watch.h"

#include <algorithm>

namespace zentor {

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

void TextWatch::Find(std::string_view bytes) {
    const std::size_t at = FindUnescaped(bytes);
    if (at != std::string_view::npos) first_ = Fault{bytes[at], passed_ + at};
}

}  // namespace zentor
