#include "format/version.h"

#include <algorithm>
#include <string>

#include "format/words.h"
#include "util/json_cursor.h"

namespace zentor {

namespace {

bool IsWord(const RawString& string, std::string_view word, LetterCase letterCase) {
    constexpr std::size_t kLongestEscape = 6;  // of one letter: a text that is longer is not decoded
    if (string.text.size() > word.size() * kLongestEscape) return false;
    const std::string text = string.Decoded();
    return std::equal(text.begin(), text.end(), word.begin(), word.end(), [letterCase](char a, char b) {
        return a == b || (letterCase == LetterCase::kAny && a >= 'A' && a <= 'Z' && a - 'A' + 'a' == b);
    });
}

}  // namespace

bool BeginsAsVersion2(std::string_view text, LetterCase letterCase) {
    JsonCursor cursor(text);
    RawString key;
    RawString value;
    cursor.SkipWhiteSpace();
    if (!cursor.Skip('{')) return false;
    cursor.SkipWhiteSpace();
    if (!cursor.TakeString(key) || !IsWord(key, words::kVersion, LetterCase::kExact)) return false;
    cursor.SkipWhiteSpace();
    if (!cursor.Skip(':')) return false;
    cursor.SkipWhiteSpace();
    return cursor.TakeString(value) && IsWord(value, words::kVersion2, letterCase);
}

}  // namespace zentor
