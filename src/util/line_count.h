// Lines of a text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace zentor {

// The line, from 1 on, in which an offset of a text is. A line ends with a line feed, or with a carriage return that
// none follows.
inline std::int64_t LineAt(std::string_view text, std::size_t offset) {
    std::int64_t line = 1;
    for (std::size_t at = 0; at < offset && at < text.size(); ++at) {
        if (text[at] == '\n' || (text[at] == '\r' && text.substr(at + 1, 1) != "\n")) ++line;
    }
    return line;
}

}  // namespace zentor
