// The bytes by which texts say how they are encoded.
#pragma once

#include <string_view>

namespace zentor {

inline constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
inline constexpr std::string_view kUtf16BigEndianMark = "\xFE\xFF";
inline constexpr std::string_view kUtf16LittleEndianMark = "\xFF\xFE";

// A text after its mark, if it begins with one.
inline std::string_view WithoutUtf8Mark(std::string_view text) {
    return text.substr(text.starts_with(kUtf8Mark) ? kUtf8Mark.size() : 0);
}

}  // namespace zentor
