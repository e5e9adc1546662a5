#include "reader/text_values.h"

#include <algorithm>

#include "reader/value_checks.h"
#include "util/json_cursor.h"
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

std::string CutPaddedText(std::string_view bytes, double length) {
    const std::string_view text =
        bytes.substr(0, static_cast<std::size_t>(std::min(length, static_cast<double>(bytes.size()))));
    return text.find('\\') == std::string_view::npos ? std::string(text) : DecodeEscapes(text);
}

}  // namespace zentor
