// The samples that a query asks for.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "reader/known_samples.h"
#include "reader/sample_reader.h"
#include "zentor/records.h"

namespace zentor {

// Samples of one set in the order in which a query wants them: two spans of them in the order of the records, or both
// backwards.
class SampleRange {
public:
    SampleRange(SampleReader reader, const std::array<RecordSpan, 2>& spans, bool isReversed);

    std::uint64_t Count() const { return spans_[0].Count() + spans_[1].Count(); }
    // The sample at a place in the range. Codes ZT_FILE_STAT, ZT_OUT_OF_MEMORY, ZT_SAMPLE_DATA.
    void Read(std::uint64_t place, ZT_Sample& sample) {
        if (isReversed_) place = Count() - 1 - place;
        const std::uint64_t inFirst = spans_[0].Count();
        reader_.Read(place < inFirst ? spans_[0].begin + place : spans_[1].begin + place - inFirst, sample);
    }
    // All of them. Codes ZT_FILE_STAT, ZT_OUT_OF_MEMORY, ZT_SAMPLE_DATA.
    std::vector<ZT_Sample> ReadAll();

private:
    SampleReader reader_;
    std::array<RecordSpan, 2> spans_;
    bool isReversed_;
};

}  // namespace zentor
