// The names by which data paths find the nodes of a document.
#pragma once

#include <algorithm>
#include <string_view>

#include "util/number_text.h"

namespace zentor {

// ASCII letters and digits, whatever the locale, and no digit first. Documents may have an empty one, too, whose
// node is found by its index alone; none is written.
inline bool IsMatchName(std::string_view name) {
    if (!name.empty() && IsDigit(name.front())) return false;
    return std::all_of(name.begin(), name.end(), [](char c) {
        const char lower = static_cast<char>(c | 0x20);
        return (lower >= 'a' && lower <= 'z') || IsDigit(c);
    });
}

}  // namespace zentor
