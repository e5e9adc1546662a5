// One set of samples in the bytes of a document: where it is, and the fixed widths by which each of its samples is
// found.
//
// A sample is a record {"time":"T","value":V} without white space, and records are separated by one comma. T is as wide
// as all times of the document, V follows from the description of the dynamic node in the outline:
//
//   numberString         "N"                              N: a sign if there are any, the integer digits, and a point
//                                                         and the decimals if there are decimals
//   numberStringArray    ["N","N"]                        (numberArray in documents before version 2)
//   paddedString         {"length":"L","str":"S"}         L: the digits of lengths, in older documents without quotes;
//                                                         S: the longest length, in bytes
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "reader/json_value.h"

namespace zentor {

enum class SampleKind : std::uint8_t { kNumber = 0, kPaddedString = 1, kNumberArray = 2 };

// Where the samples of a dynamic node are.
struct SamplePlace {
    enum class State : std::uint8_t {
        kNoData,   // the document has no such set, or an empty one
        kPresent,  // ends where the outline says
        kPastEnd,  // would end past the end of the file
    };

    std::uint64_t start = 0;  // of the first record, in the file
    State state = State::kNoData;
    bool hasQuotedLength = false;  // padded strings; seen at the first sample
};

struct SampleSet {
    std::string id;
    SampleKind kind = SampleKind::kNumber;
    std::uint64_t count = 0;  // from the outline, like all that follow; 0 where it does not say
    std::uint64_t timeWidth = 0;
    std::uint64_t numberWidth = 0;   // of a number with its quotes
    std::uint64_t arraySize = 0;     // number arrays
    std::uint64_t maxLength = 0;     // padded strings
    std::uint64_t lengthDigits = 0;  // padded strings
    SamplePlace place;

    // Sizes that no file can have come out as some huge number.
    std::uint64_t ValueWidth() const;
    std::uint64_t RecordWidth() const;
    std::uint64_t Size() const;
    std::uint64_t OffsetOf(std::uint64_t index) const { return place.start + index * (RecordWidth() + 1); }
    // How a sample is named in messages.
    std::string PlaceOf(std::uint64_t index) const;
};

// The bytes of a record before and after its time, and after its value.
inline constexpr std::string_view kRecordStart = "{\"time\":\"";
inline constexpr std::string_view kRecordMiddle = "\",\"value\":";
inline constexpr std::string_view kRecordEnd = "}";
// Those of a padded string: before the length, between length and text, after the text. A length may have quotes.
inline constexpr std::string_view kPaddedStart = "{\"length\":";
inline constexpr std::string_view kPaddedMiddle = ",\"str\":\"";
inline constexpr std::string_view kPaddedEnd = "\"}";

// How wide a number of this pattern is, with its quotes.
std::uint64_t NumberWidth(bool isSigned, std::uint64_t digitsInteger, std::uint64_t digitsDecimal);

// What the outline says of the set of a dynamic node that has been validated; all but the width of times.
SampleSet DescribeSampleSet(const JsonValue& node);

}  // namespace zentor
