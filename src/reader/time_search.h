// Finds samples by their times.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "reader/sample_range.h"
#include "reader/sample_reader.h"
#include "util/time_form.h"

namespace zentor {

// Times of records rise, so a moment is found by looking at few of them: near where it would be if they came at a
// steady pace, else by halves.
class TimeSearch {
public:
    // Looks at the first and the last sample. Codes 5, 39.
    explicit TimeSearch(SampleReader& reader);

    // The samples from one moment to another, both included. Where the times of a set begin anew, as time codes do at
    // midnight, those that fit on either side.
    std::array<RecordSpan, 2> FindRange(const QueryTime& from, const QueryTime& to);
    // The latest sample at a moment or before it, if any; of equal times, the last one.
    std::array<RecordSpan, 2> FindLatest(const QueryTime& time);

private:
    // A time that outlives the record from which it comes.
    class KeptTime {
    public:
        KeptTime() = default;
        explicit KeptTime(const Instant& time) : whole_(time.whole), decimals_(time.decimals) {}
        Instant Get() const { return {whole_, decimals_}; }

    private:
        std::int64_t whole_ = 0;
        std::string decimals_;
    };
    // Records whose times rise, with the first and the last time of them.
    struct Run {
        RecordSpan records;
        KeptTime first;
        KeptTime last;
    };

    KeptTime FirstTime();
    KeptTime LastTime();
    void SplitRuns();
    // The first record of a run from which on `isPast` is true of the times, or the end of the run; `target`: the time
    // that is looked for, about, in units of Instant::whole.
    template <class IsPast>
    std::uint64_t FindFirst(const Run& run, double target, IsPast&& isPast);
    // The same between a record before it and one that is past, or the end.
    struct Bracket {
        std::uint64_t before;
        std::uint64_t past;
        double timeBefore;
        double timePast;
    };
    template <class IsPast>
    std::uint64_t FindBetween(Bracket bracket, double target, IsPast&& isPast);
    template <class IsPast>
    std::uint64_t FindInWindow(std::uint64_t from, std::uint64_t to, IsPast&& isPast);
    RecordSpan FindRange(const Run& run, const QueryTime& from, const QueryTime& to);

    SampleReader& reader_;
    std::array<Run, 2> runs_;  // the second one is empty where times do not begin anew
};

}  // namespace zentor
