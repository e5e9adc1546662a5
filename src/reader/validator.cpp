#include "reader/validator.h"

#include <cmath>

#include "errors/raise.h"
#include "format/frame_rate.h"
#include "format/match_name.h"
#include "format/words.h"
#include "reader/misspelled_keys.h"

namespace zentor {

namespace {

void RequirePositive(ValueChecks& checks, const JsonValue& object, std::string_view key) {
    if (!(checks.Require(object, key, JsonType::kNumber).GetDouble() > 0)) {
        checks.RaiseValueAt(key, key, "a number greater than 0");
    }
}

// "ranges" and "arrayDisplayNames" have one item for each element of an array, where the document says how many.
void RequireOneForEachElement(const ValueChecks& checks, const JsonValue& properties, std::string_view key,
                              const JsonValue& items) {
    const JsonValue* const size = FindMember(properties, words::kArraySize);
    if (size == nullptr || size->GetDouble() == static_cast<double>(items.Size())) return;
    checks.RaiseValueAt(key, key, "as many items as \"arraySize\" says");
}

}  // namespace

void ZT_VkjsonValidator::UtcInfo(ValueChecks& checks, const JsonValue& info) const {
    checks.RequireCount(info, words::kPrecisionLength);
    checks.Require(info, words::kIsGmt, JsonType::kBoolean);
}

void ZT_VkjsonValidator::TimecodeInfo(ValueChecks& checks, const JsonValue& info) const {
    const JsonValue& frameRate = checks.Require(info, words::kFrameRate, JsonType::kObject);
    {
        const auto into = checks.Into(words::kFrameRate);
        RequirePositive(checks, frameRate, words::kValue);
        RequirePositive(checks, frameRate, words::kScale);
    }
    const bool dropFrame = checks.Require(info, words::kDropFrame, JsonType::kBoolean).GetBool();
    const double value = FindMember(frameRate, words::kValue)->GetDouble();
    const double scale = FindMember(frameRate, words::kScale)->GetDouble();
    // Two numbers that are in range can make one that is not.
    if (!std::isfinite(value / scale) || value / scale == 0) {
        checks.RaiseValueAt(words::kFrameRate, words::kFrameRate, "a number greater than 0");
    }
    if (dropFrame && !AllowsDropFrame(value / scale)) {
        Raise({kNonSupportedFrameRate, checks.OffsetOf(words::kFrameRate)});
    }
}

void ZT_VkjsonValidator::VideoSyncTimeList(ValueChecks& checks, const JsonValue& list) const {
    for (JsonSize i = 0; i < list.Size(); ++i) {
        const auto into = checks.Into(i);
        checks.RequireType(list[i], words::kVideoSyncTimeList, JsonType::kObject);
        VideoSyncEntry(checks, list[i]);
    }
}

void ZT_VkjsonValidator::VideoSyncEntry(ValueChecks& checks, const JsonValue& entry) const {
    checks.Require(entry, words::kFileName, JsonType::kString);
    const bool hasTime = checks.Allow(entry, words::kTimeString, JsonType::kString) != nullptr;
    const bool hasFrame = checks.Allow(entry, words::kFrameNumber, JsonType::kNumber) != nullptr;
    if (hasTime != hasFrame) {
        checks.AllowCount(entry, words::kFrameNumber);
        return;
    }
    const ErrorEntry& failure = hasTime ? kSyncTimeAndFramePresent : kSyncTimeAndFrameMissing;
    Raise({failure, checks.OffsetOf()}, words::kVideoSyncTimeList, words::kTimeString, words::kFrameNumber,
          Quoted(checks.Place()));
}

ZT_NodeType ZT_VkjsonValidator::NodeHead(const ValueChecks& checks, const JsonValue& node) const {
    const std::string_view type =
        checks.RequireOneOf(node, words::kObjectType, {words::kDataStatic, words::kDataDynamic, words::kDataGroup},
                            "one of \"dataStatic\", \"dataDynamic\" or \"dataGroup\"");
    checks.Require(node, words::kDisplayName, JsonType::kString);
    const std::string_view name = TextOf(checks.Require(node, words::kMatchName, JsonType::kString));
    if (!IsMatchName(name)) checks.RaiseAt(kInvalidMatchName, words::kMatchName, words::kMatchName);
    if (type == words::kDataGroup) return ZT_NODE_GROUP;
    return type == words::kDataStatic ? ZT_NODE_STATIC : ZT_NODE_DYNAMIC;
}

void ZT_VkjsonValidator::NodeBody(ValueChecks& checks, const JsonValue& node, ZT_NodeType type) const {
    if (type == ZT_NODE_STATIC) {
        StaticDataNode(checks, node);
    } else {
        DynamicDataNode(checks, node);
    }
}

void ZT_VkjsonValidator::DynamicDataNode(ValueChecks& checks, const JsonValue& node) const {
    checks.Require(node, words::kSampleSetId, JsonType::kString);
    checks.RequireOneOf(node, words::kInterpolation, {words::kLinear, words::kHold}, "one of \"linear\" or \"hold\"");
    const std::string_view flag = ExpectedFrequencyKey(node);
    const bool hasFrequency = checks.Require(node, flag, JsonType::kBoolean).GetBool();
    checks.RequireCount(node, words::kSampleCount);
    // Without the flag a duration means nothing, whatever it is.
    if (hasFrequency) checks.Require(node, words::kMaxInterSampleDuration, JsonType::kString);
    const JsonValue& dataType = checks.Require(node, words::kDataType, JsonType::kObject);
    const auto into = checks.Into(words::kDataType);
    const std::string_view type = DynamicType(checks, dataType);
    if (type == words::kNumberString) {
        NumberStringProperties(checks, dataType);
    } else if (type == words::kPaddedString) {
        PaddedStringProperties(checks, dataType);
    } else {
        NumberArrayProperties(checks, dataType);
    }
}

void ZT_VkjsonValidator::NumberStringProperties(ValueChecks& checks, const JsonValue& dataType) const {
    const JsonValue& properties = checks.Require(dataType, words::kNumberStringProperties, JsonType::kObject);
    const auto into = checks.Into(words::kNumberStringProperties);
    Pattern(checks, properties);
    const JsonValue& range = checks.Require(properties, words::kRange, JsonType::kObject);
    const auto intoRange = checks.Into(words::kRange);
    Range(checks, range);
}

void ZT_VkjsonValidator::PaddedStringProperties(ValueChecks& checks, const JsonValue& dataType) const {
    const JsonValue& properties = checks.Require(dataType, words::kPaddedStringProperties, JsonType::kObject);
    const auto into = checks.Into(words::kPaddedStringProperties);
    checks.AllowCount(properties, words::kMaxLen);
    checks.AllowCount(properties, words::kMaxDigitsInStrLength);
    checks.Require(properties, words::kEventMarker, JsonType::kBoolean);
}

void ZT_VkjsonValidator::NumberArrayProperties(ValueChecks& checks, const JsonValue& dataType) const {
    const JsonValue& properties = checks.Require(dataType, words::kNumberArrayProperties, JsonType::kObject);
    const auto into = checks.Into(words::kNumberArrayProperties);
    Pattern(checks, properties);
    checks.AllowCount(properties, words::kArraySize);
    ArrayDisplayNames(checks, properties);
    ArrayRanges(checks, properties);
    checks.Allow(properties, words::kIsPoint, JsonType::kBoolean);
}

void ZT_VkjsonValidator::Pattern(ValueChecks& checks, const JsonValue& properties) const {
    const JsonValue& pattern = checks.Require(properties, words::kPattern, JsonType::kObject);
    const auto into = checks.Into(words::kPattern);
    checks.Require(pattern, words::kIsSigned, JsonType::kBoolean);
    checks.AllowCount(pattern, words::kDigitsInteger);
    checks.AllowCount(pattern, words::kDigitsDecimal);
}

void ZT_VkjsonValidator::Range(ValueChecks& checks, const JsonValue& range) const {
    for (const std::string_view key : {OccurringKey(range), std::string_view(words::kLegal)}) {
        const JsonValue& limits = checks.Require(range, key, JsonType::kObject);
        const auto into = checks.Into(key);
        checks.Require(limits, words::kMin, JsonType::kNumber);
        checks.Require(limits, words::kMax, JsonType::kNumber);
    }
}

void ZT_VkjsonValidator::ArrayRanges(ValueChecks& checks, const JsonValue& properties) const {
    const JsonValue& arrayRanges = checks.Require(properties, words::kArrayRanges, JsonType::kObject);
    const auto into = checks.Into(words::kArrayRanges);
    const JsonValue& ranges = checks.Require(arrayRanges, words::kRanges, JsonType::kArray);
    checks.RequireElements(ranges, words::kRanges);
    for (JsonSize i = 0; i < ranges.Size(); ++i) {
        const auto intoRanges = checks.Into(words::kRanges);
        const auto intoRange = checks.Into(i);
        checks.RequireType(ranges[i], words::kRanges, JsonType::kObject);
        Range(checks, ranges[i]);
    }
    RequireOneForEachElement(checks, properties, words::kRanges, ranges);
}

void ZT_VkjsonValidator::ArrayDisplayNames(ValueChecks& checks, const JsonValue& properties) const {
    const JsonValue* const names = checks.Allow(properties, words::kArrayDisplayNames, JsonType::kArray);
    if (names == nullptr) return;
    for (JsonSize i = 0; i < names->Size(); ++i) {
        const auto into = checks.Into(words::kArrayDisplayNames);
        const auto intoName = checks.Into(i);
        checks.RequireType((*names)[i], words::kArrayDisplayNames, JsonType::kString);
    }
    if (!names->Empty()) RequireOneForEachElement(checks, properties, words::kArrayDisplayNames, *names);
}

std::string_view ZT_VkjsonValidator_v1::DynamicType(ValueChecks& checks, const JsonValue& dataType) const {
    return checks.RequireOneOf(dataType, words::kType,
                               {words::kNumberString, words::kPaddedString, words::kNumberArray},
                               "one of \"numberString\", \"paddedString\" or \"numberArray\"");
}

std::string_view ZT_VkjsonValidator_v2::DynamicType(ValueChecks& checks, const JsonValue& dataType) const {
    return checks.RequireOneOf(dataType, words::kType,
                               {words::kNumberString, words::kPaddedString, words::kNumberStringArray},
                               "one of \"numberString\", \"paddedString\" or \"numberStringArray\".");
}

}  // namespace zentor
