#include "util/text_encoding.h"

#include <algorithm>
#include <array>

#include "errors/raise.h"
#include "util/utf_codec.h"

namespace zentor {

std::size_t EncodeCodePoint(std::uint32_t codePoint, std::span<char> out) {
    if (codePoint > kLargestCodePoint) Raise(kBadUtf);
    if (IsHighSurrogate(codePoint) || IsLowSurrogate(codePoint)) Raise(kBadCodePoint);
    std::array<char, 4> bytes;
    const std::size_t length = EncodeUtf8(codePoint, bytes.data());
    if (length > out.size()) return 0;
    std::copy_n(bytes.begin(), length, out.begin());
    return length;
}

Utf8Block ConvertRun(std::u16string_view units, std::span<char, kUtf8BlockSize> block) {
    Utf8Block done{0, 0};
    while (done.unitsConsumed < units.size() && done.bytesProduced < block.size()) {
        std::uint32_t codePoint = units[done.unitsConsumed];
        std::size_t unitCount = 1;
        if (IsLowSurrogate(codePoint)) Raise(kBadUtf16Low);
        if (IsHighSurrogate(codePoint)) {
            if (done.unitsConsumed + 1 == units.size()) break;
            const std::uint32_t low = units[done.unitsConsumed + 1];
            if (!IsLowSurrogate(low)) Raise(kBadUtf16Missing);
            codePoint = CombineSurrogates(codePoint, low);
            unitCount = 2;
        }
        const std::size_t length = EncodeCodePoint(codePoint, std::span(block).subspan(done.bytesProduced));
        if (length == 0) break;
        done.unitsConsumed += unitCount;
        done.bytesProduced += length;
    }
    return done;
}

void ConvertToUtf8(std::u16string_view units, std::string& text) {
    text.clear();
    text.reserve(2 * units.size());
    std::array<char, kUtf8BlockSize> block;
    while (!units.empty()) {
        const Utf8Block done = ConvertRun(units, block);
        if (done.bytesProduced == 0) Raise(kBadUnicode);
        text.append(block.data(), done.bytesProduced);
        units.remove_prefix(done.unitsConsumed);
    }
}

std::u16string WidenAscii(std::string_view text) {
    const bool ascii = std::all_of(text.begin(), text.end(), [](unsigned char byte) { return byte < 0x80; });
    return ascii ? std::u16string(text.begin(), text.end()) : std::u16string();
}

}  // namespace zentor
