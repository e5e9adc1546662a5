#include "text_output.h"

#include <charconv>

#include "standard_output.h"
#include "util/utf_codec.h"

namespace zentor_cli {

namespace {

bool IsControl(char16_t unit) { return unit < 0x20 || (unit >= 0x7F && unit < 0xA0); }

}  // namespace

std::string NumberText(double value) {
    char digits[32];
    const char* const end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    return std::string(static_cast<const char*>(digits), end);
}

std::string NumbersText(std::span<const double> values) {
    std::string text;
    for (const double value : values) text += (text.empty() ? "" : " ") + NumberText(value);
    return text;
}

namespace {

// The beginning of a long text that does not end within a character.
std::string_view FirstPiece(std::string_view text) {
    constexpr std::size_t kPiece = 65536;
    constexpr std::size_t kLongestCharacter = 4;
    if (text.size() <= kPiece) return text;
    std::size_t end = kPiece;
    while (end > kPiece - kLongestCharacter && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) --end;
    return text.substr(0, end);
}

std::string PrintablePiece(std::string_view text) {
    std::u16string shown;
    for (const char16_t unit : zentor::Utf8ToUtf16(text)) {
        if (!IsControl(unit)) {
            shown += unit;
            continue;
        }
        constexpr const char16_t* kHex = u"0123456789abcdef";
        shown += u"\\u00";
        shown += kHex[unit >> 4];
        shown += kHex[unit & 15];
    }
    return zentor::Utf16ToUtf8(shown);
}

}  // namespace

std::string Printable(std::string_view text) {
    std::string shown;
    for (std::string_view piece = FirstPiece(text); !text.empty(); piece = FirstPiece(text)) {
        shown += PrintablePiece(piece);
        text.remove_prefix(piece.size());
    }
    return shown;
}

std::string Padded(std::string text, std::size_t width) {
    if (text.size() < width) text.append(width - text.size(), ' ');
    return text;
}

void PrintField(const std::string& name, const std::string& value) {
    WriteOutput(Padded(name + ":", 22) + ' ' + value + '\n');
}

void PrintTextField(const std::string& name, std::string_view text) {
    WriteOutput(Padded(name + ":", 22) + ' ');
    for (std::string_view piece = FirstPiece(text); !text.empty(); piece = FirstPiece(text)) {
        WriteOutput(PrintablePiece(piece));
        text.remove_prefix(piece.size());
    }
    WriteOutput("\n");
}

}  // namespace zentor_cli
