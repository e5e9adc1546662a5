#include "reader/sample_data_processor.h"

#include <algorithm>
#include <cstdint>

#include "errors/raise.h"
#include "reader/schema_words.h"

namespace zentor {

namespace {

// Searched and then written while it is still in the processor's cache.
constexpr std::size_t kPiece = std::size_t{1} << 18;

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

std::size_t ZT_SampleDataProcessor::CopySamples(std::string_view bytes, std::size_t begin) {
    copy_.Create();
    std::size_t depth = 0;
    std::size_t offset = begin;
    do {
        const std::string_view piece = bytes.substr(offset, kPiece);
        if (piece.empty()) {
            Raise({kInvalidJson, static_cast<std::int64_t>(offset)}, Quoted(words::kDataDynamicSamples));
        }
        const std::size_t taken = FindClosingBracket(piece, depth);
        copy_.Write(piece.substr(0, taken));
        offset += taken;
    } while (depth != 0);
    copy_.Close();
    return offset;
}

}  // namespace zentor
