// Texts of any bytes as JSON strings hold them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace zentor {

// How texts go into a document.
enum class TextForm : std::uint8_t {
    kAsItIs,     // byte for byte
    kEscaped,    // as JSON escapes them
    kCompleted,  // the same, but for JSON escapes that are there already: whoever made the text has escaped it
};

enum class Brackets : std::uint8_t { kPlain, kEscaped };

// The length of the UTF-8 character that a text begins with; 0 when it begins with none.
std::size_t Utf8Length(std::string_view text);

// The length of the JSON escape that a text begins with; 0 for none.
std::size_t EscapeLength(std::string_view text);

// The first byte that may have to be written in another way: a quotation mark, a backslash, a control character, one
// that is not ASCII. The size of the text when there is none.
std::size_t FindUnplain(std::string_view text);

// The text as a JSON string holds it: borrowed, or in `room` where it becomes another one. Quotation marks, backslashes
// and control characters are escaped; a byte that is no part of UTF-8 is taken for one of Windows-1252, and where that
// has no meaning becomes U+FFFD.
std::string_view EscapeText(std::string_view text, TextForm form, Brackets brackets, std::string& room);

}  // namespace zentor
