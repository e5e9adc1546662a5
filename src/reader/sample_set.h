// One set of samples in the bytes of a document: where it is, and the layout of its records.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "format/sample_record.h"
#include "reader/json_value.h"

namespace zentor {

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
    std::uint64_t count = 0;  // from the outline, like the layout, in which what it does not say is 0
    RecordLayout layout;
    SamplePlace place;

    std::uint64_t Size() const { return layout.Size(count); }
    std::uint64_t OffsetOf(std::uint64_t index) const { return place.start + index * (layout.Width() + 1); }
    // How a sample is named in messages.
    std::string PlaceOf(std::uint64_t index) const;
};

// What the outline says of the set of a dynamic node that has been validated; all but the width of times.
SampleSet DescribeSampleSet(const JsonValue& node);

}  // namespace zentor
