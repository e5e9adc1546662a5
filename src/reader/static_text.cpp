#include "reader/static_text.h"

#include <algorithm>

#include "reader/value_checks.h"
#include "util/number_text.h"

namespace zentor {

bool ReadNumberText(const JsonValue& value, double& number) {
    if (value.IsNumber()) {
        number = value.GetDouble();
        return true;
    }
    const std::string_view text = TextOf(value);
    return ParseNumber(text.data(), text.data() + text.size(), number) == text.data() + text.size();
}

bool ReadLength(const JsonValue& value, double& length) {
    if (value.IsString()) {
        const std::string_view text = TextOf(value);
        if (!std::all_of(text.begin(), text.end(), IsDigit)) return false;
    }
    return ReadNumberText(value, length) && IsCount(length);
}

}  // namespace zentor
