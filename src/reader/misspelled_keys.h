// The two properties that have a second, misspelled name.
#pragma once

#include <string_view>

#include "format/words.h"
#include "reader/json_value.h"

namespace zentor {

// The name under which an object has the property; the right one when it has neither.
inline std::string_view SpellingOf(const JsonValue& object, std::string_view right, std::string_view misspelled) {
    const bool isMisspelled = FindMember(object, right) == nullptr && FindMember(object, misspelled) != nullptr;
    return isMisspelled ? misspelled : right;
}

inline std::string_view ExpectedFrequencyKey(const JsonValue& node) {
    return SpellingOf(node, words::kHasExpectedFrequency, words::kHasExpectedFrequencyMisspelled);
}

inline std::string_view OccurringKey(const JsonValue& range) {
    return SpellingOf(range, words::kOccurring, words::kOccurringMisspelled);
}

}  // namespace zentor
