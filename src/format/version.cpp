#include "format/version.h"

#include <algorithm>

#include "format/words.h"
#include "util/json_cursor.h"

namespace zentor {

namespace {

bool IsWord(std::string_view text, std::string_view word, LetterCase letterCase) {
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
    if (!cursor.TakeString(key) || !IsWord(key.Decoded(), words::kVersion, LetterCase::kExact)) return false;
    cursor.SkipWhiteSpace();
    if (!cursor.Skip(':')) return false;
    cursor.SkipWhiteSpace();
    return cursor.TakeString(value) && IsWord(value.Decoded(), words::kVersion2, letterCase);
}

}  // namespace zentor
