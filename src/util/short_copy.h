// Copies of names and numbers, which are nearly always of 4 to 16 bytes.
#pragma once

#include <cstring>
#include <string_view>

namespace zentor {

// Copies a text; returns the end of the copy. Two moves that overlap take the place of a call.
inline char* CopyShort(char* out, std::string_view text) {
    const std::size_t size = text.size();
    if (size >= 8 && size <= 16) {
        std::memcpy(out, text.data(), 8);
        std::memcpy(out + size - 8, text.data() + size - 8, 8);
    } else if (size >= 4 && size < 8) {
        std::memcpy(out, text.data(), 4);
        std::memcpy(out + size - 4, text.data() + size - 4, 4);
    } else {
        std::memmove(out, text.data(), size);
    }
    return out + size;
}

}  // namespace zentor
