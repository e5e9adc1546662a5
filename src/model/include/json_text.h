// Texts with quotes, backslashes, control characters or bytes that are no UTF-8, made so that a document can hold them.
// The library writes the texts of plug-ins as they are: a quote in one makes a document that is written, but cannot be
// read back. A faithful conversion escapes what is still to be escaped; what these functions have made stays as it is.
// Needs C++14 and nothing else, neither the library nor the rest of these headers.
//
//     root.Add(conversion.CreateText("device", "Device", ZT_PLUGIN::EscapedText(name)));
//     note.AddSample(time, ZT_PLUGIN::EscapedSampleText(text));
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace ZT_PLUGIN {

namespace json_text_private {

// What bytes 0x80 to 0x9F are in Windows-1252; U+FFFD for the five that are nothing. All others are Latin-1.
inline std::uint32_t Windows1252(unsigned char byte) {
    constexpr std::uint16_t kMiddle[] = {
        0x20AC, 0xFFFD, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
        0x2039, 0x0152, 0xFFFD, 0x017D, 0xFFFD, 0xFFFD, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
        0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0xFFFD, 0x017E, 0x0178,
    };
    return byte >= 0x80 && byte <= 0x9F ? kMiddle[byte - 0x80] : byte;
}

}  // namespace json_text_private

// Appends a character, which is no surrogate and at most U+10FFFF.
inline void AppendUtf8(std::string& text, std::uint32_t character) {
    if (character < 0x80) {
        text += static_cast<char>(character);
        return;
    }
    if (character < 0x800) {
        text += static_cast<char>(0xC0 | (character >> 6));
    } else {
        if (character < 0x10000) {
            text += static_cast<char>(0xE0 | (character >> 12));
        } else {
            text += static_cast<char>(0xF0 | (character >> 18));
            text += static_cast<char>(0x80 | ((character >> 12) & 0x3F));
        }
        text += static_cast<char>(0x80 | ((character >> 6) & 0x3F));
    }
    text += static_cast<char>(0x80 | (character & 0x3F));
}

// Appends what a byte is in Windows-1252; U+FFFD for the five that are nothing.
inline void AppendWindows1252(std::string& text, unsigned char byte) {
    AppendUtf8(text, json_text_private::Windows1252(byte));
}

// How many bytes the UTF-8 character at a place has; 0 for none: cut short, longer than need be, a surrogate, or beyond
// U+10FFFF.
inline std::size_t Utf8Length(const std::string& text, std::size_t at) {
    const auto byte = [&](std::size_t k) -> std::uint32_t {
        return at + k < text.size() ? static_cast<unsigned char>(text[at + k]) : 0U;
    };
    const std::uint32_t first = byte(0);
    if (first < 0x80) return 1;
    if (first < 0xC2 || first > 0xF4) return 0;
    const std::size_t length = first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    std::uint32_t lowest = 0x80;
    std::uint32_t highest = 0xBF;
    if (first == 0xE0) lowest = 0xA0;
    if (first == 0xED) highest = 0x9F;
    if (first == 0xF0) lowest = 0x90;
    if (first == 0xF4) highest = 0x8F;
    if (byte(1) < lowest || byte(1) > highest) return 0;
    for (std::size_t k = 2; k < length; ++k) {
        if (byte(k) < 0x80 || byte(k) > 0xBF) return 0;
    }
    return length;
}

namespace json_text_private {

inline void AppendUnicodeEscape(std::string& text, unsigned char byte) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    text += "\\u00";
    text += kDigits[byte >> 4];
    text += kDigits[byte & 0xF];
}

inline void AppendEscaped(std::string& text, char c) {
    switch (c) {
        case '"':
            text += "\\\"";
            break;
        case '\\':
            text += "\\\\";
            break;
        case '\n':
            text += "\\n";
            break;
        case '\r':
            text += "\\r";
            break;
        case '\t':
            text += "\\t";
            break;
        default:
            if (static_cast<unsigned char>(c) < 0x20) {
                AppendUnicodeEscape(text, static_cast<unsigned char>(c));
            } else {
                text += c;
            }
    }
}

inline std::string Escaped(const std::string& text, bool withBrackets) {
    std::string escaped;
    escaped.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = Utf8Length(text, at);
        const char c = text[at];
        if (length == 0) {
            AppendWindows1252(escaped, static_cast<unsigned char>(c));
        } else if (length > 1) {
            escaped.append(text, at, length);
        } else if (withBrackets && (c == '[' || c == ']')) {
            AppendUnicodeEscape(escaped, static_cast<unsigned char>(c));
        } else {
            AppendEscaped(escaped, c);
        }
        at += length == 0 ? 1 : length;
    }
    return escaped;
}

}  // namespace json_text_private

// The text with JSON's escapes for quotes, backslashes and control characters, zeros among them. A byte that is no part
// of UTF-8 is read as Windows-1252, and as U+FFFD where that has nothing. Readers give the text back as it was.
inline std::string EscapedText(const std::string& text) { return json_text_private::Escaped(text, false); }

// The same for a sample, in which square brackets are escaped, too: they have to be balanced in samples otherwise.
inline std::string EscapedSampleText(const std::string& text) { return json_text_private::Escaped(text, true); }

}  // namespace ZT_PLUGIN
