#include "reader/node_records.h"

#include <algorithm>

#include "errors/raise.h"
#include "format/words.h"
#include "reader/misspelled_keys.h"
#include "reader/text_values.h"
#include "util/json_cursor.h"

namespace zentor {

namespace {

const char* DisplayWord(ZT_NodeType type) {
    switch (type) {
        case ZT_NODE_GROUP:
            return "Group data node";
        case ZT_NODE_DYNAMIC:
            return "Dynamic data node";
        case ZT_NODE_STATIC:
            return "Static data node";
        default:
            return "invalid node";
    }
}

std::string StringOf(const JsonValue& object, std::string_view key) {
    return std::string(TextOf(*FindMember(object, key)));
}

bool FlagOf(const JsonValue& object, std::string_view key) {
    const JsonValue* const flag = FindMember(object, key);
    return flag != nullptr && flag->GetBool();
}

// -1 when there is none.
std::int64_t CountOf(const JsonValue& object, std::string_view key) {
    const JsonValue* const count = FindMember(object, key);
    return count == nullptr ? -1 : static_cast<std::int64_t>(count->GetDouble());
}

ZT_NumberPattern PatternOf(const JsonValue& properties) {
    const JsonValue& pattern = *FindMember(properties, words::kPattern);
    return {FlagOf(pattern, words::kIsSigned), CountOf(pattern, words::kDigitsInteger),
            CountOf(pattern, words::kDigitsDecimal)};
}

ZT_NumberRange RangeOf(const JsonValue& range) {
    const JsonValue& occurring = *FindMember(range, OccurringKey(range));
    const JsonValue& legal = *FindMember(range, words::kLegal);
    return {FindMember(occurring, words::kMin)->GetDouble(), FindMember(occurring, words::kMax)->GetDouble(),
            FindMember(legal, words::kMin)->GetDouble(), FindMember(legal, words::kMax)->GetDouble()};
}

void FillArrayProperties(const JsonValue& properties, ZT_DataType& type) {
    type.pattern = PatternOf(properties);
    const JsonValue& arrayRanges = *FindMember(properties, words::kArrayRanges);
    for (const JsonValue& range : FindMember(arrayRanges, words::kRanges)->GetArray()) {
        type.ranges.push_back(RangeOf(range));
    }
    type.arraySize = CountOf(properties, words::kArraySize);
    type.isPoint = FlagOf(properties, words::kIsPoint);
    if (const JsonValue* const names = FindMember(properties, words::kArrayDisplayNames)) {
        for (const JsonValue& name : names->GetArray()) type.arrayDisplayNames.emplace_back(TextOf(name));
    }
}

// The properties object that the type has; others that a document may have besides mean nothing.
ZT_DataType DataTypeOf(const JsonValue& node) {
    const JsonValue& dataType = *FindMember(node, words::kDataType);
    ZT_DataType type;
    type.type = StringOf(dataType, words::kType);
    if (type.type == words::kNumber || type.type == words::kNumberString) {
        const JsonValue& properties = *FindMember(dataType, words::kNumberStringProperties);
        type.pattern = PatternOf(properties);
        type.ranges.push_back(RangeOf(*FindMember(properties, words::kRange)));
    } else if (type.type == words::kString || type.type == words::kPaddedString) {
        const JsonValue& properties = *FindMember(dataType, words::kPaddedStringProperties);
        type.maxLen = CountOf(properties, words::kMaxLen);
        type.maxDigitsInStrLength = CountOf(properties, words::kMaxDigitsInStrLength);
        type.eventMarkerB = FlagOf(properties, words::kEventMarker);
    } else if (type.type != words::kBoolean) {
        FillArrayProperties(*FindMember(dataType, words::kNumberArrayProperties), type);
    }
    return type;
}

double NumberOf(const JsonValue& value) {
    double number = 0;
    ReadNumberText(value, number);
    return number;
}

// As it stands in the document: a value in memory has its escapes decoded, which its length does not count.
std::string PaddedTextOf(const NodeValues& node) {
    double length = 0;
    ReadLength(*FindMember(*FindMember(node.values(), words::kValue), words::kLength), length);
    JsonCursor cursor(node.TextOfMember(words::kValue));
    cursor.Skip('{');
    for (bool goesOn = true; goesOn; goesOn = cursor.Skip(',')) {
        RawString key;
        RawString value;
        cursor.SkipWhiteSpace();
        cursor.TakeString(key);
        cursor.SkipWhiteSpace();
        cursor.Skip(':');
        cursor.SkipWhiteSpace();
        if (key.Decoded() == words::kStr && cursor.TakeString(value)) return CutPaddedText(value.text, length);
        cursor.SkipValue();
        cursor.SkipWhiteSpace();
    }
    return {};
}

decltype(ZT_StaticDataInfo::value) ValueOf(const NodeValues& node, const std::string& type) {
    const JsonValue& value = *FindMember(node.values(), words::kValue);
    if (type == words::kBoolean) return value.GetBool();
    if (type == words::kString) return std::string(TextOf(value));
    if (type == words::kPaddedString) return PaddedTextOf(node);
    if (type != words::kNumberArray) return NumberOf(value);
    std::vector<double> numbers;
    numbers.reserve(value.Size());
    for (const JsonValue& item : value.GetArray()) numbers.push_back(NumberOf(item));
    return numbers;
}

}  // namespace

ZT_GroupChildInfo GroupChildInfoOf(const NodeValues& node) {
    if (node.IsRoot()) return {ZT_NODE_GROUP, {}, std::string(words::kDataOutline)};
    return {node.type(), StringOf(node.values(), words::kDisplayName), StringOf(node.values(), words::kMatchName)};
}

ZT_StaticDataInfo StaticDataInfoOf(const NodeValues& node) {
    RequireType(node.type(), ZT_NODE_STATIC);
    const JsonValue& found = node.values();
    ZT_StaticDataInfo info;
    info.displayName = StringOf(found, words::kDisplayName);
    info.matchName = StringOf(found, words::kMatchName);
    info.dataType = DataTypeOf(found);
    info.value = ValueOf(node, info.dataType.type);
    return info;
}

void RequireType(ZT_NodeType found, ZT_NodeType type) {
    if (found != type) Raise(kInvalidNodeType, Quoted(DisplayWord(type)), Quoted(DisplayWord(found)));
}

ZT_DynamicDataInfo DynamicDataInfoOf(const NodeValues& node) {
    RequireType(node.type(), ZT_NODE_DYNAMIC);
    const JsonValue& found = node.values();
    ZT_DynamicDataInfo info;
    info.displayName = StringOf(found, words::kDisplayName);
    info.matchName = StringOf(found, words::kMatchName);
    info.sampleSetID = StringOf(found, words::kSampleSetId);
    info.interpolation = StringOf(found, words::kInterpolation);
    info.hasExpectedFrequencyB = FlagOf(found, ExpectedFrequencyKey(found));
    info.sampleCount = static_cast<std::uint64_t>(CountOf(found, words::kSampleCount));
    if (info.hasExpectedFrequencyB) {
        info.expectedMaxInterSampleDuration = StringOf(found, words::kMaxInterSampleDuration);
    }
    info.dataType = DataTypeOf(found);
    return info;
}

}  // namespace zentor
