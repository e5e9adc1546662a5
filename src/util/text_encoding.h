// Checked conversion of UTF-16 text. Every failure is a ZT_Exception with code 1.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace zentor {

inline constexpr std::size_t kUtf8BlockSize = 16384;

// Writes `codePoint` to `out` and returns the number of bytes, or writes nothing and returns 0 when the room is too
// small. Above U+10FFFF: BadUTF; a surrogate: BadCodePoint.
std::size_t EncodeCodePoint(std::uint32_t codePoint, std::span<char> out);

struct Utf8Block {
    std::size_t unitsConsumed;
    std::size_t bytesProduced;
};

// Converts as much of `units` as fits into `block`. A leading low surrogate: BadUTF16Low; a high surrogate followed by
// anything but a low one: BadUTF16Missing. A high surrogate that is the very last unit stays unconsumed.
Utf8Block ConvertRun(std::u16string_view units, std::span<char, kUtf8BlockSize> block);

// Replaces `text` by the UTF-8 form of `units`. A high surrogate at the end: BadUnicode. After a failure `text` holds
// what had been converted so far.
void ConvertToUtf8(std::u16string_view units, std::string& text);

// Widens ASCII text; empty when any byte is above 127.
std::u16string WidenAscii(std::string_view text);

}  // namespace zentor
