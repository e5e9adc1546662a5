// The words of the document format, and the two properties that have a second, misspelled name.
#pragma once

#include <string_view>

#include "reader/json_value.h"

namespace zentor::words {

// The top level.
inline constexpr std::string_view kVersion = "version";
inline constexpr std::string_view kCreator = "creator";
inline constexpr std::string_view kUseTimecode = "useTimecodeB";
inline constexpr std::string_view kUtcInfo = "utcInfo";
inline constexpr std::string_view kTimecodeInfo = "timecodeInfo";
inline constexpr std::string_view kDataOutline = "dataOutline";
inline constexpr std::string_view kDataDynamicSamples = "dataDynamicSamples";
inline constexpr std::string_view kVideoSyncTimeList = "videoSyncTimeList";
inline constexpr std::string_view kDynamicSamplesPresent = "dynamicSamplesPresentB";
inline constexpr std::string_view kDynamicDataInfo = "dynamicDataInfo";

// Time information.
inline constexpr std::string_view kPrecisionLength = "precisionLength";
inline constexpr std::string_view kIsGmt = "isGMT";
inline constexpr std::string_view kFrameRate = "frameRate";
inline constexpr std::string_view kValue = "value";
inline constexpr std::string_view kScale = "scale";
inline constexpr std::string_view kDropFrame = "dropFrame";
inline constexpr std::string_view kFileName = "fileName";
inline constexpr std::string_view kTimeString = "timeString";
inline constexpr std::string_view kFrameNumber = "frameNumber";

// Nodes.
inline constexpr std::string_view kObjectType = "objectType";
inline constexpr std::string_view kDataGroup = "dataGroup";
inline constexpr std::string_view kDataStatic = "dataStatic";
inline constexpr std::string_view kDataDynamic = "dataDynamic";
inline constexpr std::string_view kDisplayName = "displayName";
inline constexpr std::string_view kMatchName = "matchName";
inline constexpr std::string_view kChildren = "children";
inline constexpr std::string_view kSampleSetId = "sampleSetID";
inline constexpr std::string_view kSamples = "samples";
inline constexpr std::string_view kInterpolation = "interpolation";
inline constexpr std::string_view kLinear = "linear";
inline constexpr std::string_view kHold = "hold";
inline constexpr std::string_view kHasExpectedFrequency = "hasExpectedFrequencyB";
inline constexpr std::string_view kHasExpectedFrequencyMisspelled = "hasExpectedFrequecyB";
inline constexpr std::string_view kSampleCount = "sampleCount";
inline constexpr std::string_view kMaxInterSampleDuration = "expectedMaxInterSampleDuration";

// Data types.
inline constexpr std::string_view kDataType = "dataType";
inline constexpr std::string_view kType = "type";
inline constexpr std::string_view kNumber = "number";
inline constexpr std::string_view kString = "string";
inline constexpr std::string_view kBoolean = "boolean";
inline constexpr std::string_view kNumberArray = "numberArray";
inline constexpr std::string_view kNumberString = "numberString";
inline constexpr std::string_view kPaddedString = "paddedString";
inline constexpr std::string_view kNumberStringArray = "numberStringArray";
inline constexpr std::string_view kNumberStringProperties = "numberStringProperties";
inline constexpr std::string_view kPaddedStringProperties = "paddedStringProperties";
inline constexpr std::string_view kNumberArrayProperties = "numberArrayProperties";
inline constexpr std::string_view kPattern = "pattern";
inline constexpr std::string_view kIsSigned = "isSigned";
inline constexpr std::string_view kDigitsInteger = "digitsInteger";
inline constexpr std::string_view kDigitsDecimal = "digitsDecimal";
inline constexpr std::string_view kRange = "range";
inline constexpr std::string_view kOccurring = "occurring";
inline constexpr std::string_view kOccurringMisspelled = "occuring";
inline constexpr std::string_view kLegal = "legal";
inline constexpr std::string_view kMin = "min";
inline constexpr std::string_view kMax = "max";
inline constexpr std::string_view kMaxLen = "maxLen";
inline constexpr std::string_view kMaxDigitsInStrLength = "maxDigitsInStrLength";
inline constexpr std::string_view kEventMarker = "eventMarkerB";
inline constexpr std::string_view kArraySize = "arraySize";
inline constexpr std::string_view kArrayDisplayNames = "arrayDisplayNames";
inline constexpr std::string_view kArrayRanges = "arrayRanges";
inline constexpr std::string_view kRanges = "ranges";
inline constexpr std::string_view kIsPoint = "isPoint";
inline constexpr std::string_view kLength = "length";
inline constexpr std::string_view kStr = "str";

}  // namespace zentor::words

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
