// Reads the data type of a node whose outline is plain.
#pragma once

#include <cstdint>

#include "reader/plain_json.h"
#include "reader/sample_set.h"

namespace zentor {

// What "type" says.
enum class PlainType : std::uint8_t {
    kNone,
    kNumber,
    kString,
    kBoolean,
    kNumberArray,
    kNumberString,
    kPaddedString,
    kNumberStringArray,
};

// What a data type says, as far as samples depend on it.
struct PlainDataType {
    PlainType type = PlainType::kNone;
    SampleSet set;
};

// Reads the object; false where it is not plain, or not valid.
bool ReadDataType(PlainJson& json, PlainDataType& dataType);

}  // namespace zentor
