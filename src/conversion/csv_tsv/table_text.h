// The text of a table file.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "util/file_mapper.h"

namespace zentor {

enum class ByteOrderMark { kNone = 0, kUtf8 = 1, kUtf16BigEndian = 2, kUtf16LittleEndian = 3 };

// Which mark a text begins with. The three are tried in this order, and each goes on after the bytes that the one
// before matched, so that a text can begin with a part of another mark.
ByteOrderMark FindByteOrderMark(std::string_view bytes);

// The UTF-8 form of UTF-16 text in little-endian order. U+FEFF and U+FFFE are dropped wherever they stand; a lone
// surrogate becomes U+FFFD; an odd byte at the end is ignored.
std::string DecodeUtf16(std::string_view bytes);

// Reads a table file. Text with a UTF-16 mark of either order is decoded as little-endian; any other text is taken byte
// for byte, after a UTF-8 mark.
class TableText {
public:
    // False when the file cannot be read. An empty file is an empty text.
    bool Read(const std::string& path);
    // Lives as long as this object.
    std::string_view view() const { return view_; }
    // Where it begins in the file; -1 when it had to be decoded.
    std::int64_t Start() const { return start_; }

private:
    FileMapper file_;
    std::string decoded_;
    std::string_view view_;
    std::int64_t start_ = 0;
};

}  // namespace zentor
