// Static nodes, whose types and values differ between the versions.
#include "errors/raise.h"
#include "format/words.h"
#include "reader/text_values.h"
#include "reader/validator.h"

namespace zentor {

namespace {

// A number, or a string that holds one, of an older document: a member of the object at this place, or the value there.
void CheckNumberText(const ValueChecks& checks, const JsonValue& value, std::string_view key) {
    double number = 0;
    if (value.IsNumber() || (value.IsString() && ReadNumberText(value, number))) return;
    if (value.IsString()) checks.RaiseValueAt(words::kValue, key, "a number");
    checks.RaiseTypeAt(words::kValue, key, JsonType::kString);
}

void CheckNumberArray(ValueChecks& checks, const JsonValue& node) {
    const JsonValue& value = checks.Require(node, words::kValue, JsonType::kArray);
    const auto into = checks.Into(words::kValue);
    for (JsonSize i = 0; i < value.Size(); ++i) {
        const auto intoItem = checks.Into(i);
        CheckNumberText(checks, value[i], {});
    }
}

void CheckPaddedString(ValueChecks& checks, const JsonValue& node) {
    const JsonValue& value = checks.Require(node, words::kValue, JsonType::kObject);
    const auto into = checks.Into(words::kValue);
    const JsonValue& length = checks.Require(value, words::kLength);
    checks.Require(value, words::kStr, JsonType::kString);
    if (!length.IsNumber()) checks.Require(value, words::kLength, JsonType::kString);
    double count = 0;
    if (!ReadLength(length, count)) {
        checks.RaiseValueAt(words::kLength, words::kLength, kExpectedCount);
    }
    const JsonValue& properties = *FindMember(*FindMember(node, words::kDataType), words::kPaddedStringProperties);
    const JsonValue* const maxLength = FindMember(properties, words::kMaxLen);
    if (maxLength != nullptr && count > maxLength->GetDouble()) {
        Raise({kInvalidPaddedStringLength, checks.OffsetOf(words::kLength)});
    }
}

}  // namespace

void ZT_VkjsonValidator_v1::StaticDataNode(ValueChecks& checks, const JsonValue& node) const {
    const JsonValue& dataType = checks.Require(node, words::kDataType, JsonType::kObject);
    std::string_view type;
    {
        const auto into = checks.Into(words::kDataType);
        type = DynamicType(checks, dataType);
        if (type == words::kNumberString) NumberStringProperties(checks, dataType);
        if (type == words::kPaddedString) PaddedStringProperties(checks, dataType);
        if (type == words::kNumberArray) NumberArrayProperties(checks, dataType);
    }
    if (type == words::kPaddedString) CheckPaddedString(checks, node);
    if (type == words::kNumberArray) CheckNumberArray(checks, node);
    if (type == words::kNumberString) CheckNumberText(checks, checks.Require(node, words::kValue), words::kValue);
}

void ZT_VkjsonValidator_v2::StaticDataNode(ValueChecks& checks, const JsonValue& node) const {
    const JsonValue& dataType = checks.Require(node, words::kDataType, JsonType::kObject);
    std::string_view type;
    {
        const auto into = checks.Into(words::kDataType);
        type = checks.RequireOneOf(dataType, words::kType,
                                   {words::kNumber, words::kString, words::kBoolean, words::kNumberArray},
                                   "one of \"number\", \"string\" , \"boolean\" or \"numberArray\"");
        if (type == words::kNumber) NumberStringProperties(checks, dataType);
        if (type == words::kString) PaddedStringProperties(checks, dataType);
        if (type == words::kNumberArray) NumberArrayProperties(checks, dataType);
    }
    if (type == words::kNumber) checks.Require(node, words::kValue, JsonType::kNumber);
    if (type == words::kString) checks.Require(node, words::kValue, JsonType::kString);
    if (type == words::kBoolean) checks.Require(node, words::kValue, JsonType::kBoolean);
    if (type != words::kNumberArray) return;
    const JsonValue& value = checks.Require(node, words::kValue, JsonType::kArray);
    const auto into = checks.Into(words::kValue);
    for (JsonSize i = 0; i < value.Size(); ++i) {
        const auto intoItem = checks.Into(i);
        checks.RequireType(value[i], words::kValue, JsonType::kNumber);
    }
}

}  // namespace zentor
