// Finds samples by their times.
#pragma once

#include <array>
#include <cstdint>

#include "reader/known_samples.h"
#include "reader/sample_reader.h"
#include "zentor/time_form.h"

namespace zentor {

// Looks at the first and the last sample of a set. Where the last one is before the first one, times begin anew, as
// time codes do at midnight: then it looks for the place. Codes ZT_FILE_STAT, ZT_OUT_OF_MEMORY, ZT_SAMPLE_DATA.
std::array<SampleRun, 2> FindRuns(SampleReader& reader);

// Times of a run rise, so a moment is found by looking at few of its records: near where it would be if they came at a
// steady pace, else by halves. Codes of all functions: ZT_FILE_STAT, ZT_OUT_OF_MEMORY, ZT_SAMPLE_DATA.
class TimeSearch {
public:
    TimeSearch(SampleReader& reader, const std::array<SampleRun, 2>& runs) : reader_(reader), runs_(runs) {}

    // The samples from one moment to another, both included; where times begin anew, those that fit on either side.
    std::array<RecordSpan, 2> FindRange(const QueryTime& from, const QueryTime& to);
    // The latest sample at a moment or before it, if any; of equal times, the last one.
    std::array<RecordSpan, 2> FindLatest(const QueryTime& time);

private:
    // The first record of a run from which on `isPast` is true of the times, or the end of the run; `target`: the time
    // that is looked for, about, in units of Instant::whole.
    template <class IsPast>
    std::uint64_t FindFirst(const SampleRun& run, double target, IsPast&& isPast);
    RecordSpan FindRange(const SampleRun& run, const QueryTime& from, const QueryTime& to);

    SampleReader& reader_;
    const std::array<SampleRun, 2>& runs_;
};

}  // namespace zentor
