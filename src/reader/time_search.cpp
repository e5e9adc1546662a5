#include "reader/time_search.h"

#include <algorithm>

#include "errors/raise.h"

namespace zentor {

namespace {

// How much is read at once: a small set whole, of others some records around the place where a time may be.
constexpr std::size_t kSmallSet = 16384;
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

}  // namespace

TimeSearch::TimeSearch(SampleReader& reader) : reader_(reader) {
    runs_[0] = {{0, reader.set().count}, FirstTime(), LastTime()};
    if (runs_[0].last.Get() < runs_[0].first.Get()) SplitRuns();
}

// The last time is before the first one: somewhere in between they have begun anew.
void TimeSearch::SplitRuns() {
    const Run whole = runs_[0];
    const Instant first = whole.first.Get();
    const std::uint64_t anew =
        FindBetween({0, whole.records.end - 1, 0, 0}, 0, [&](const Instant& time) { return time < first; });
    runs_[1] = {{anew, whole.records.end}, KeptTime(reader_.TimeOf(anew)), whole.last};
    runs_[0] = {{0, anew}, whole.first, KeptTime(reader_.TimeOf(anew - 1))};
}

TimeSearch::KeptTime TimeSearch::FirstTime() {
    const SampleSet& set = reader_.set();
    RecordWindow& window = reader_.window();
    if (set.Size() < kSmallSet) window.MoveAround(0, 0, set.count, kSmallSet);
    if (const auto time = reader_.FindTime(0)) return KeptTime(*time);
    const SampleReader::Fault fault = reader_.FaultOf(0);
    if (fault != SampleReader::Fault::kTime) reader_.RaiseFault(fault, 0);
    Raise({kInvalidTimeValue, static_cast<std::int64_t>(set.OffsetOf(0))}, set.PlaceOf(0));
}

TimeSearch::KeptTime TimeSearch::LastTime() {
    const SampleSet& set = reader_.set();
    const std::uint64_t last = set.count - 1;
    if (const auto time = reader_.FindTime(last)) return KeptTime(*time);
    const SampleReader::Fault fault = reader_.FaultOf(last);
    if (fault != SampleReader::Fault::kTime) reader_.RaiseFault(fault, last);
    Raise({kInvalidTimeValueForId, static_cast<std::int64_t>(set.OffsetOf(last))}, Excerpt(set.id));
}

template <class IsPast>
std::uint64_t TimeSearch::FindInWindow(std::uint64_t from, std::uint64_t to, IsPast&& isPast) {
    while (from != to) {
        const std::uint64_t middle = from + (to - from) / 2;
        if (isPast(reader_.TimeOf(middle))) {
            to = middle;
        } else {
            from = middle + 1;
        }
    }
    return from;
}

template <class IsPast>
std::uint64_t TimeSearch::FindFirst(const Run& run, double target, IsPast&& isPast) {
    const Instant first = run.first.Get();
    const Instant last = run.last.Get();
    if (isPast(first)) return run.records.begin;
    if (!isPast(last)) return run.records.end;
    return FindBetween({run.records.begin, run.records.end - 1, Approximate(first), Approximate(last)}, target, isPast);
}

template <class IsPast>
std::uint64_t TimeSearch::FindBetween(Bracket bracket, double target, IsPast&& isPast) {
    auto& [before, past, timeBefore, timePast] = bracket;
    RecordWindow& window = reader_.window();
    for (bool halve = false; past - before > 1; halve = !halve) {
        if (window.First() <= before + 1 && past <= window.End()) return FindInWindow(before + 1, past, isPast);
        const double share = (target - timeBefore) / (timePast - timeBefore);
        const bool isSteady = !halve && share >= 0 && share <= 1;  // of equal times it is no number
        const auto steps =
            isSteady ? static_cast<std::uint64_t>(share * static_cast<double>(past - before)) : (past - before) / 2;
        const std::uint64_t around = before + std::clamp<std::uint64_t>(steps, 1, past - before - 1);
        window.MoveAround(around, before + 1, past, kAround);
        const std::uint64_t first = window.First();
        const std::uint64_t last = window.End() - 1;
        const Instant lastTime = reader_.TimeOf(last);
        if (!isPast(lastTime)) {
            before = last;
            timeBefore = Approximate(lastTime);
            continue;
        }
        const Instant firstTime = reader_.TimeOf(first);
        if (!isPast(firstTime)) return FindInWindow(first + 1, last, isPast);
        past = first;
        timePast = Approximate(firstTime);
    }
    return past;
}

RecordSpan TimeSearch::FindRange(const Run& run, const QueryTime& from, const QueryTime& to) {
    if (run.records.Count() == 0) return {};
    const std::uint64_t begin = FindFirst(run, Approximate(from), [&](const Instant& time) { return time >= from; });
    const std::uint64_t end = FindFirst(run, Approximate(to), [&](const Instant& time) { return time > to; });
    return {begin, std::max(begin, end)};
}

std::array<RecordSpan, 2> TimeSearch::FindRange(const QueryTime& from, const QueryTime& to) {
    return {FindRange(runs_[0], from, to), FindRange(runs_[1], from, to)};
}

std::array<RecordSpan, 2> TimeSearch::FindLatest(const QueryTime& time) {
    const bool isInFirst = runs_[1].records.Count() == 0 || runs_[0].first.Get() <= time;
    const Run& run = runs_[isInFirst ? 0 : 1];
    const std::uint64_t end = FindFirst(run, Approximate(time), [&](const Instant& sample) { return sample > time; });
    return {RecordSpan{end == run.records.begin ? end : end - 1, end}, RecordSpan{}};
}

}  // namespace zentor
