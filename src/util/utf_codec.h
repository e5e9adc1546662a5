// Conversions between UTF-8 and UTF-16 that never fail: what cannot be decoded becomes U+FFFD.
// They know nothing of errors, so that message forming can stand on them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace zentor {

inline constexpr std::uint32_t kReplacementCharacter = 0xFFFD;
inline constexpr std::uint32_t kLargestCodePoint = 0x10FFFF;

constexpr bool IsHighSurrogate(std::uint32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
constexpr bool IsLowSurrogate(std::uint32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

constexpr std::uint32_t CombineSurrogates(std::uint32_t high, std::uint32_t low) {
    return 0x10000 + ((high - 0xD800) << 10) + (low - 0xDC00);
}

// Writes a code point that is at most U+10FFFF and no surrogate to `out` (room for 4 bytes); returns the byte count.
std::size_t EncodeUtf8(std::uint32_t codePoint, char* out);

void AppendUtf8(std::string& text, std::uint32_t codePoint);

std::u16string Utf8ToUtf16(std::string_view text);
std::string Utf16ToUtf8(std::u16string_view text);

}  // namespace zentor
