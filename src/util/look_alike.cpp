#include "util/look_alike.h"

#include <algorithm>
#include <string>
#include <vector>

namespace zentor {

namespace {

std::string LettersOf(std::string_view name) {
    std::string letters;
    for (const char c : name) {
        if (c != '_' && c != '-' && c != ' ') letters += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return letters;
}

// How many letters have to be put in, taken out, replaced, or exchanged with their neighbours.
std::size_t Difference(std::string_view a, std::string_view b) {
    std::vector<std::size_t> beforeLast;
    std::vector<std::size_t> last(b.size() + 1);
    for (std::size_t k = 0; k <= b.size(); ++k) last[k] = k;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::vector<std::size_t> row{i};
        for (std::size_t k = 1; k <= b.size(); ++k) {
            std::size_t least = std::min({last[k] + 1, row[k - 1] + 1, last[k - 1] + (a[i - 1] == b[k - 1] ? 0 : 1)});
            const bool isExchange = i > 1 && k > 1 && a[i - 1] == b[k - 2] && a[i - 2] == b[k - 1];
            if (isExchange) least = std::min(least, beforeLast[k - 2] + 1);
            row.push_back(least);
        }
        beforeLast = std::move(last);
        last = std::move(row);
    }
    return last.back();
}

}  // namespace

bool LooksLike(std::string_view name, std::string_view known) {
    const std::string letters = LettersOf(name);
    const std::string expected = LettersOf(known);
    const std::size_t allowed = std::max<std::size_t>(expected.size() / 5, 1);
    // What is much longer is not compared.
    return letters.size() <= expected.size() + allowed && Difference(letters, expected) <= allowed;
}

}  // namespace zentor
