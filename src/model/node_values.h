// Values and properties of nodes, as the writer takes them.
#pragma once

#include <cstdint>
#include <limits>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "model/include/nodes.h"
#include "util/number_text.h"

namespace ZT_PLUGIN {

// A range about which nothing is known: minimum above maximum.
inline constexpr double kUnknownMinimum = std::numeric_limits<double>::max();
inline constexpr double kUnknownMaximum = -std::numeric_limits<double>::max();

struct NumberPattern {
    std::uint64_t digitsInteger = kUnsetCount;
    std::uint64_t digitsDecimal = kUnsetCount;
    bool isSigned = false;

    bool IsKnown() const { return digitsInteger != kUnsetCount; }
};

struct MinMax {
    double minimum = kUnknownMinimum;
    double maximum = kUnknownMaximum;

    bool IsKnown() const { return minimum != kUnknownMinimum || maximum != kUnknownMaximum; }
};

struct StringProperties {
    std::uint64_t maxLength = 0;
    std::uint64_t maxDigitsInLength = 0;
    bool isEventMarker = false;
};

struct NumberArray {
    std::vector<double> values;
    std::vector<MinMax> legalRanges;  // one for each element, or none
    std::vector<std::string> displayNames;
    NumberPattern pattern;
    bool isPoint = false;
};

enum class StaticKind { kNumber = 0, kString = 1, kNumberArray = 2, kBoolean = 3 };

// The numbers of this kind are those by which clients' kinds are checked.
enum class DynamicKind { kNumber = 0, kString = 1, kNumberArray = 2 };

enum class Interpolation : std::uint32_t { kLinear = 1, kHold = 2 };

// What a number, or an element of an array, occupies and may occupy. Unknown: no sample; anything.
struct ElementRange {
    MinMax occurring;
    MinMax legal;
};

// A dynamic node as it is written, with everything that the widths of its samples depend on. Texts and lists are
// borrowed.
struct DynamicNodeView {
    DynamicKind kind = DynamicKind::kNumber;
    std::string_view matchName;
    std::string_view displayName;
    std::string_view sampleSetId;
    Interpolation interpolation = Interpolation::kLinear;
    bool hasExpectedFrequency = false;
    std::uint64_t sampleCount = 0;
    std::string_view maxInterSampleDuration;
    NumberPattern pattern;                      // kNumber, kNumberArray: known, and as wide as the widest sample
    std::span<const ElementRange> ranges;       // kNumber: one; kNumberArray: one for each element
    StringProperties stringProperties;          // kString: as wide as the widest sample
    std::span<const std::string> displayNames;  // kNumberArray: one for each element, or none
    bool isPoint = false;                       // kNumberArray
};

// A static node while it is written. The texts and the array are borrowed.
struct StaticNodeView {
    StaticKind kind = StaticKind::kNumber;
    std::string_view matchName;
    std::string_view displayName;
    double number = 0;                  // kNumber, unless its text is given
    zentor::NumberText numberText;      // kNumber: what FormatNumber gives, where the source has it already; else empty
    NumberPattern pattern;              // kNumber; unset: the digits of the number
    MinMax legalRange;                  // kNumber; unknown: the number
    std::string_view text;              // kString
    StringProperties stringProperties;  // kString
    bool boolean = false;               // kBoolean
    const NumberArray* array = nullptr;  // kNumberArray
};

}  // namespace ZT_PLUGIN
