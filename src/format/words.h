// The words of the document format. Whoever writes or reads documents takes them from here.
#pragma once

#include "util/fixed_text.h"

namespace zentor::words {

// Of the names of files.
inline constexpr FixedText kExtension = "vkjson";

// The top level.
inline constexpr FixedText kVersion2 = "vkjson2.0.0";  // what "version" says from version 2 on
inline constexpr FixedText kVersion = "version";
inline constexpr FixedText kCreator = "creator";
inline constexpr FixedText kUseTimecode = "useTimecodeB";
inline constexpr FixedText kUtcInfo = "utcInfo";
inline constexpr FixedText kTimecodeInfo = "timecodeInfo";
inline constexpr FixedText kDataOutline = "dataOutline";
inline constexpr FixedText kDataDynamicSamples = "dataDynamicSamples";
inline constexpr FixedText kVideoSyncTimeList = "videoSyncTimeList";
inline constexpr FixedText kDynamicSamplesPresent = "dynamicSamplesPresentB";
inline constexpr FixedText kDynamicDataInfo = "dynamicDataInfo";

// Time information.
inline constexpr FixedText kPrecisionLength = "precisionLength";
inline constexpr FixedText kIsGmt = "isGMT";
inline constexpr FixedText kFrameRate = "frameRate";
inline constexpr FixedText kValue = "value";
inline constexpr FixedText kScale = "scale";
inline constexpr FixedText kDropFrame = "dropFrame";
inline constexpr FixedText kFileName = "fileName";
inline constexpr FixedText kTimeString = "timeString";
inline constexpr FixedText kFrameNumber = "frameNumber";

// Nodes.
inline constexpr FixedText kObjectType = "objectType";
inline constexpr FixedText kDataGroup = "dataGroup";
inline constexpr FixedText kDataStatic = "dataStatic";
inline constexpr FixedText kDataDynamic = "dataDynamic";
inline constexpr FixedText kDisplayName = "displayName";
inline constexpr FixedText kMatchName = "matchName";
inline constexpr FixedText kChildren = "children";
inline constexpr FixedText kSampleSetId = "sampleSetID";
inline constexpr FixedText kSamples = "samples";
inline constexpr FixedText kInterpolation = "interpolation";
inline constexpr FixedText kLinear = "linear";
inline constexpr FixedText kHold = "hold";
inline constexpr FixedText kHasExpectedFrequency = "hasExpectedFrequencyB";
inline constexpr FixedText kSampleCount = "sampleCount";
inline constexpr FixedText kMaxInterSampleDuration = "expectedMaxInterSampleDuration";

// Data types.
inline constexpr FixedText kDataType = "dataType";
inline constexpr FixedText kType = "type";
inline constexpr FixedText kNumber = "number";
inline constexpr FixedText kString = "string";
inline constexpr FixedText kBoolean = "boolean";
inline constexpr FixedText kNumberArray = "numberArray";
inline constexpr FixedText kNumberString = "numberString";
inline constexpr FixedText kPaddedString = "paddedString";
inline constexpr FixedText kNumberStringArray = "numberStringArray";
inline constexpr FixedText kNumberStringProperties = "numberStringProperties";
inline constexpr FixedText kPaddedStringProperties = "paddedStringProperties";
inline constexpr FixedText kNumberArrayProperties = "numberArrayProperties";
inline constexpr FixedText kPattern = "pattern";
inline constexpr FixedText kIsSigned = "isSigned";
inline constexpr FixedText kDigitsInteger = "digitsInteger";
inline constexpr FixedText kDigitsDecimal = "digitsDecimal";
inline constexpr FixedText kRange = "range";
inline constexpr FixedText kOccurring = "occurring";
inline constexpr FixedText kLegal = "legal";
inline constexpr FixedText kMin = "min";
inline constexpr FixedText kMax = "max";
inline constexpr FixedText kMaxLen = "maxLen";
inline constexpr FixedText kMaxDigitsInStrLength = "maxDigitsInStrLength";
inline constexpr FixedText kEventMarker = "eventMarkerB";
inline constexpr FixedText kArraySize = "arraySize";
inline constexpr FixedText kArrayDisplayNames = "arrayDisplayNames";
inline constexpr FixedText kArrayRanges = "arrayRanges";
inline constexpr FixedText kRanges = "ranges";
inline constexpr FixedText kIsPoint = "isPoint";
inline constexpr FixedText kLength = "length";
inline constexpr FixedText kStr = "str";

// A record of a sample.
inline constexpr FixedText kTime = "time";

// Two properties have a second name, which older documents spell so.
inline constexpr FixedText kHasExpectedFrequencyMisspelled = "hasExpectedFrequecyB";
inline constexpr FixedText kOccurringMisspelled = "occuring";

}  // namespace zentor::words
