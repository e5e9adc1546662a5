#include "words.h"

namespace series {

namespace {

bool IsUpper(char c) { return c >= 'A' && c <= 'Z'; }
bool IsLower(char c) { return c >= 'a' && c <= 'z'; }
bool IsWordCharacter(char c) { return IsUpper(c) || IsLower(c) || IsDigit(c) || static_cast<unsigned char>(c) >= 0x80; }
char ToLower(char c) { return IsUpper(c) ? static_cast<char>(c - 'A' + 'a') : c; }
bool IsSpace(char c) { return IsBlank(c) || c == '\r' || c == '\n'; }

}  // namespace

std::string_view Trimmed(std::string_view text) {
    while (!text.empty() && IsSpace(text.front())) text.remove_prefix(1);
    while (!text.empty() && IsSpace(text.back())) text.remove_suffix(1);
    return text;
}

std::string Lower(std::string_view text) {
    std::string lower(text);
    for (char& c : lower) c = ToLower(c);
    return lower;
}

bool IsSame(std::string_view text, std::string_view lower) {
    if (text.size() != lower.size()) return false;
    for (std::size_t k = 0; k < text.size(); ++k) {
        if (ToLower(text[k]) != lower[k]) return false;
    }
    return true;
}

std::vector<std::string> WordsOf(std::string_view text) {
    std::vector<std::string> words;
    bool isInWord = false;
    for (std::size_t k = 0; k < text.size(); ++k) {
        const bool isHump = k != 0 && IsUpper(text[k]) && IsLower(text[k - 1]);
        if (!IsWordCharacter(text[k])) {
            isInWord = false;
            continue;
        }
        if (!isInWord || isHump) words.emplace_back();
        isInWord = true;
        words.back() += ToLower(text[k]);
    }
    return words;
}

}  // namespace series
