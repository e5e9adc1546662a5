#include "reader/time_search.h"

#include <algorithm>

#include "errors/raise.h"

namespace zentor {

namespace {

// How much is read at once around the place where a time may be.
constexpr std::size_t kAround = 4096;

double Approximate(const Instant& time) {
    double fraction = 0;
    double digit = 0.1;
    for (const char c : time.decimals.substr(0, 9)) {
        fraction += (c - '0') * digit;
        digit /= 10;
    }
    return static_cast<double>(time.whole) + fraction;
}

double Approximate(const QueryTime& time) { return static_cast<double>(time.whole) + time.rest * 1.0 / time.scale; }

// Between a record before a moment and one that is past it, or the end.
struct Bracket {
    std::uint64_t before;
    std::uint64_t past;
    double timeBefore;
    double timePast;
};

template <class IsPast>
std::uint64_t FindInWindow(SampleReader& reader, std::uint64_t from, std::uint64_t to, IsPast&& isPast) {
    while (from != to) {
        const std::uint64_t middle = from + (to - from) / 2;
        if (isPast(reader.TimeOf(middle))) {
            to = middle;
        } else {
            from = middle + 1;
        }
    }
    return from;
}

template <class IsPast>
std::uint64_t FindBetween(SampleReader& reader, Bracket bracket, double target, IsPast&& isPast) {
    auto& [before, past, timeBefore, timePast] = bracket;
    RecordWindow& window = reader.window();
    for (bool halve = false; past - before > 1; halve = !halve) {
        if (window.First() <= before + 1 && past <= window.End()) return FindInWindow(reader, before + 1, past, isPast);
        const double share = (target - timeBefore) / (timePast - timeBefore);
        const bool isSteady = !halve && share >= 0 && share <= 1;  // of equal times it is no number
        const auto steps =
            isSteady ? static_cast<std::uint64_t>(share * static_cast<double>(past - before)) : (past - before) / 2;
        const std::uint64_t around = before + std::clamp<std::uint64_t>(steps, 1, past - before - 1);
        window.MoveAround(around, before + 1, past, kAround);
        const std::uint64_t first = window.First();
        const std::uint64_t last = window.End() - 1;
        const Instant lastTime = reader.TimeOf(last);
        if (!isPast(lastTime)) {
            before = last;
            timeBefore = Approximate(lastTime);
            continue;
        }
        const Instant firstTime = reader.TimeOf(first);
        if (!isPast(firstTime)) return FindInWindow(reader, first + 1, last, isPast);
        past = first;
        timePast = Approximate(firstTime);
    }
    return past;
}

KeptTime FirstTime(SampleReader& reader) {
    if (const auto time = reader.FindTime(0)) return KeptTime(*time);
    const RecordFault fault = reader.FaultOf(0);
    if (fault != RecordFault::kTime) reader.RaiseFault(fault, 0);
    const SampleSet& set = reader.set();
    Raise({kInvalidTimeValue, static_cast<std::int64_t>(set.OffsetOf(0))}, set.PlaceOf(0));
}

KeptTime LastTime(SampleReader& reader) {
    const SampleSet& set = reader.set();
    const std::uint64_t last = set.count - 1;
    if (const auto time = reader.FindTime(last)) return KeptTime(*time);
    const RecordFault fault = reader.FaultOf(last);
    if (fault != RecordFault::kTime) reader.RaiseFault(fault, last);
    Raise({kInvalidTimeValueForId, static_cast<std::int64_t>(set.OffsetOf(last))}, Excerpt(set.id));
}

}  // namespace

std::array<SampleRun, 2> FindRuns(SampleReader& reader) {
    SampleRun whole{{0, reader.set().count}, FirstTime(reader), {}};
    whole.last = LastTime(reader);
    const Instant first = whole.first.Get();
    if (whole.last.Get() >= first) return {whole, SampleRun()};
    const std::uint64_t anew =
        FindBetween(reader, {0, whole.records.end - 1, 0, 0}, 0, [&](const Instant& time) { return time < first; });
    SampleRun second{{anew, whole.records.end}, KeptTime(reader.TimeOf(anew)), whole.last};
    whole.records.end = anew;
    whole.last = KeptTime(reader.TimeOf(anew - 1));
    return {whole, second};
}

template <class IsPast>
std::uint64_t TimeSearch::FindFirst(const SampleRun& run, double target, IsPast&& isPast) {
    const Instant first = run.first.Get();
    const Instant last = run.last.Get();
    if (isPast(first)) return run.records.begin;
    if (!isPast(last)) return run.records.end;
    return FindBetween(reader_, {run.records.begin, run.records.end - 1, Approximate(first), Approximate(last)}, target,
                       isPast);
}

RecordSpan TimeSearch::FindRange(const SampleRun& run, const QueryTime& from, const QueryTime& to) {
    if (run.records.Count() == 0) return {};
    const std::uint64_t begin =
        FindFirst(run, Approximate(from), [&](const Instant& time) { return Compare(time, from) >= 0; });
    const std::uint64_t end =
        FindFirst(run, Approximate(to), [&](const Instant& time) { return Compare(time, to) > 0; });
    return {begin, std::max(begin, end)};
}

std::array<RecordSpan, 2> TimeSearch::FindRange(const QueryTime& from, const QueryTime& to) {
    return {FindRange(runs_[0], from, to), FindRange(runs_[1], from, to)};
}

std::array<RecordSpan, 2> TimeSearch::FindLatest(const QueryTime& time) {
    const bool isInFirst = runs_[1].records.Count() == 0 || Compare(runs_[0].first.Get(), time) <= 0;
    const SampleRun& run = runs_[isInFirst ? 0 : 1];
    const std::uint64_t end =
        FindFirst(run, Approximate(time), [&](const Instant& sample) { return Compare(sample, time) > 0; });
    return {RecordSpan{end == run.records.begin ? end : end - 1, end}, RecordSpan{}};
}

}  // namespace zentor
