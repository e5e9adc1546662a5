// The records that samples are written as. A sample is a record {"time":"T","value":V} without white space, and those
// of one set are separated by one comma. They all have one width, by which readers find each of them: T is as wide as
// all times of the document, and V follows from the description of the dynamic node in the outline:
//
//   numberString         "N"                              N: a sign if there are any, the integer digits, and a point
//                                                         and the decimals if there are decimals
//   numberStringArray    ["N","N"]                        (numberArray in documents before version 2)
//   paddedString         {"length":"L","str":"S"}         L: the digits of lengths, in older documents without quotes;
//                                                         S: the longest length, in bytes
#pragma once

#include <cstdint>
#include <string_view>

#include "format/words.h"

namespace zentor {

enum class SampleKind : std::uint8_t { kNumber = 0, kPaddedString = 1, kNumberArray = 2 };

// Digits of numbers that are padded with zeros to one width.
struct PaddedPattern {
    bool isSigned = false;
    std::uint64_t digitsInteger = 0;
    std::uint64_t digitsDecimal = 0;

    // With quotes.
    std::uint64_t Width() const {
        return 2 + (isSigned ? 1 : 0) + digitsInteger + (digitsDecimal == 0 ? 0 : digitsDecimal + 1);
    }
};

// What is wrong with a record: the first of these in its text.
enum class RecordFault : std::uint8_t { kNone, kForm, kNoTimeKey, kTime, kNoValueKey };

// A record taken apart, borrowed from it.
struct RecordParts {
    std::string_view time;   // empty where a fault comes before it
    std::string_view value;  // as it stands; nothing has looked at it
};

struct RecordLayout {
    SampleKind kind = SampleKind::kNumber;
    bool hasQuotedLength = true;  // padded strings
    std::uint64_t timeWidth = 0;
    PaddedPattern pattern;           // numbers and arrays
    std::uint64_t arraySize = 0;     // arrays
    std::uint64_t maxLength = 0;     // padded strings
    std::uint64_t lengthDigits = 0;  // padded strings

    // Widths that no file can have come out as some huge number.
    std::uint64_t ValueWidth() const;
    std::uint64_t Width() const;
    // Of `count` records with the commas between them.
    std::uint64_t Size(std::uint64_t count) const;

    // Where the time begins in each record, and where it ends.
    static constexpr std::size_t kTimeOffset = words::kTime.size() + 5;  // {"":"
    std::uint64_t TimeEnd() const { return kTimeOffset + timeWidth; }
    // Whether a text begins as a record does.
    static bool IsAtRecord(std::string_view text);
    // Whether the length of a padded string has quotes, of which a record with this beginning tells.
    bool SeesQuotedLength(std::string_view record) const;

    // Writes a record; returns its end. The value is a number as text; the texts of all elements with commas between
    // them; or a string. All fit the widths.
    char* Put(char* out, std::string_view time, std::string_view value) const;

    // The time of a record, without a look at the rest; empty when there is none of this width.
    std::string_view TimeIn(std::string_view record) const;
    // Takes apart a record of this width. The text of the time is as wide as times are.
    RecordFault TakeApart(std::string_view record, RecordParts& parts) const;
};

// A number in a record of samples, with its quotes; false for any other text.
bool ReadPaddedNumber(std::string_view quoted, double& number);

enum class ValueFault : std::uint8_t { kNone, kForm, kCount, kLength };

// The elements of an array, each a number with its quotes: `take` gets them in order, and says whether it is one.
// kCount: there are fewer than `size`.
template <class Take>
ValueFault TakeElements(std::string_view value, std::uint64_t size, Take&& take) {
    const auto skip = [&value](char c) {
        if (!value.starts_with(c)) return false;
        value.remove_prefix(1);
        return true;
    };
    if (!skip('[')) return ValueFault::kForm;
    for (std::uint64_t k = 0; k < size; ++k) {
        if (k != 0 && !skip(',')) return value.starts_with(']') ? ValueFault::kCount : ValueFault::kForm;
        if (value.starts_with(']')) return ValueFault::kCount;
        std::size_t end = 0;
        while (end != value.size() && value[end] != ',' && value[end] != ']') ++end;
        if (!take(value.substr(0, end))) return ValueFault::kForm;
        value.remove_prefix(end);
    }
    return value == "]" ? ValueFault::kNone : ValueFault::kForm;
}

// The text of a padded string with its padding, and its length as the record states it. kLength: that is beyond the
// longest length.
ValueFault TakePaddedString(std::string_view value, const RecordLayout& layout, std::string_view& text, double& length);

}  // namespace zentor
