#include "reader/bracket_search.h"

#include <algorithm>
#include <cstdint>

namespace zentor {

namespace {

constexpr std::size_t kBlock = 64;

struct BracketCounts {
    std::uint8_t open;
    std::uint8_t close;
};

// Counts in bytes and without branches, so that the compiler does it for many bytes at once.
BracketCounts CountBrackets(const char* block) {
    std::uint8_t open = 0;
    std::uint8_t close = 0;
    for (std::size_t i = 0; i < kBlock; ++i) {
        open = static_cast<std::uint8_t>(open + (block[i] == '['));
        close = static_cast<std::uint8_t>(close + (block[i] == ']'));
    }
    return {open, close};
}

}  // namespace

std::size_t FindClosingBracket(std::string_view bytes, std::size_t& depth) {
    const char* next = bytes.data();
    const char* const end = next + bytes.size();
    while (next != end) {
        const auto left = static_cast<std::size_t>(end - next);
        if (left >= kBlock) {
            const BracketCounts counts = CountBrackets(next);
            if (depth > counts.close) {  // no bracket of this block can be the one
                depth = depth + counts.open - counts.close;
                next += kBlock;
                continue;
            }
        }
        const char* const blockEnd = next + std::min(left, kBlock);
        for (; next != blockEnd; ++next) {
            if (*next == '[') ++depth;
            if (*next == ']' && --depth == 0) return static_cast<std::size_t>(next + 1 - bytes.data());
        }
    }
    return bytes.size();
}

}  // namespace zentor
