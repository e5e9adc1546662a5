#include "util/escaped_text.h"

#include <cstring>

#include "util/utf_codec.h"

namespace zentor {

namespace {

constexpr bool IsUnplain(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte < 0x20 || byte >= 0x80 || c == '"' || c == '\\';
}

// The characters of Windows-1252 from 0x80 to 0x9F; those from 0xA0 on are Unicode's own.
constexpr std::uint16_t kWindows1252[] = {
    0x20AC, 0xFFFD, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0xFFFD, 0x017D, 0xFFFD, 0xFFFD, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0xFFFD, 0x017E, 0x0178,
};

void AppendEscape(std::string& out, char c) {
    constexpr std::string_view kCharacters = "\"\\\b\f\n\r\t";
    constexpr std::string_view kLetters = "\"\\bfnrt";
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    const std::size_t which = kCharacters.find(c);
    if (which != std::string_view::npos) {
        (out += '\\') += kLetters[which];
        return;
    }
    const auto byte = static_cast<unsigned char>(c);
    ((out += "\\u00") += kDigits[byte >> 4]) += kDigits[byte & 15];
}

bool IsContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

}  // namespace

std::size_t Utf8Length(std::string_view text) {
    if (text.empty()) return 0;
    const auto first = static_cast<unsigned char>(text[0]);
    if (first < 0x80) return 1;
    const std::size_t length = first < 0xC2 ? 0 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : first < 0xF5 ? 4 : 0;
    if (length == 0 || text.size() < length) return 0;
    for (std::size_t k = 1; k < length; ++k) {
        if (!IsContinuation(text[k])) return 0;
    }
    const auto second = static_cast<unsigned char>(text[1]);
    const bool isOverlong = (first == 0xE0 && second < 0xA0) || (first == 0xF0 && second < 0x90);
    const bool isBeyond = (first == 0xED && second >= 0xA0) || (first == 0xF4 && second >= 0x90);
    return isOverlong || isBeyond ? 0 : length;
}

std::size_t EscapeLength(std::string_view text) {
    constexpr std::string_view kHexadecimal = "0123456789abcdefABCDEF";
    constexpr std::size_t kUnicodeEscape = 6;
    if (text.size() < 2 || text[0] != '\\') return 0;
    if (std::string_view("\"\\/bfnrt").find(text[1]) != std::string_view::npos) return 2;
    if (text[1] != 'u' || text.size() < kUnicodeEscape) return 0;
    const std::string_view digits = text.substr(2, kUnicodeEscape - 2);
    return digits.find_first_not_of(kHexadecimal) == std::string_view::npos ? kUnicodeEscape : 0;
}

std::size_t FindUnplain(std::string_view text) {
    constexpr std::uint64_t kOnes = 0x0101010101010101;
    constexpr std::uint64_t kHighs = kOnes * 0x80;
    // Which bytes are zero; none before the first is taken for one.
    constexpr auto zeros = [](std::uint64_t word) { return (word - kOnes) & ~word & kHighs; };
    std::size_t at = 0;
    for (; text.size() - at >= sizeof(std::uint64_t); at += sizeof(std::uint64_t)) {
        std::uint64_t word = 0;
        std::memcpy(&word, text.data() + at, sizeof word);
        const std::uint64_t controls = (word - kOnes * 0x20) & ~word & kHighs;
        const std::uint64_t found =
            (word & kHighs) | controls | zeros(word ^ (kOnes * '"')) | zeros(word ^ (kOnes * '\\'));
        if (found != 0) break;  // the byte itself is looked for below
    }
    while (at < text.size() && !IsUnplain(text[at])) ++at;
    return at;
}

std::string_view EscapeText(std::string_view text, TextForm form, Brackets brackets, std::string& room) {
    if (form == TextForm::kAsItIs) return text;
    const bool escapesBrackets = brackets == Brackets::kEscaped;
    if (FindUnplain(text) == text.size() && (!escapesBrackets || text.find_first_of("[]") == std::string_view::npos)) {
        return text;
    }
    room.clear();
    room.reserve(text.size() + text.size() / 8 + 8);
    while (!text.empty()) {
        const char c = text.front();
        std::size_t taken = 1;
        if (escapesBrackets && (c == '[' || c == ']')) {
            room += c == '[' ? "\\u005B" : "\\u005D";
        } else if (!IsUnplain(c)) {
            room += c;
        } else if (static_cast<unsigned char>(c) >= 0x80) {
            taken = Utf8Length(text);
            if (taken != 0) {
                room += text.substr(0, taken);
            } else {
                const std::uint32_t byte = static_cast<unsigned char>(c);
                AppendUtf8(room, byte < 0xA0 ? kWindows1252[byte - 0x80] : byte);
                taken = 1;
            }
        } else if (const std::size_t escape = form == TextForm::kCompleted ? EscapeLength(text) : 0; escape != 0) {
            room += text.substr(0, escape);
            taken = escape;
        } else {
            AppendEscape(room, c);
        }
        text.remove_prefix(taken);
    }
    return room;
}

}  // namespace zentor
