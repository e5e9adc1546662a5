#include "reader/sample_range.h"

#include <new>
#include <stdexcept>
#include <utility>

#include "errors/raise.h"

namespace zentor {

SampleRange::SampleRange(SampleReader reader, const std::array<RecordSpan, 2>& spans, bool isReversed)
    : reader_(std::move(reader)), spans_(spans), isReversed_(isReversed) {
    const bool hasBoth = spans[0].Count() != 0 && spans[1].Count() != 0;
    const RecordSpan& only = spans[0].Count() != 0 ? spans[0] : spans[1];
    reader_.window().Limit(only.begin, hasBoth ? spans[1].end : only.end);
}

std::vector<ZT_Sample> SampleRange::ReadAll() {
    std::vector<ZT_Sample> samples;
    try {
        samples.reserve(Count());
        for (std::uint64_t place = 0; place < Count(); ++place) Read(place, samples.emplace_back());
    } catch (const std::bad_alloc&) {
        Raise(kSampleMemoryNotAvailable, "sample set id:" + Excerpt(reader_.set().id));
    } catch (const std::length_error&) {
        Raise(kSampleMemoryNotAvailable, "sample set id:" + Excerpt(reader_.set().id));
    }
    return samples;
}

}  // namespace zentor
