#include "reader/sample_data_processor.h"

#include <algorithm>
#include <new>
#include <stdexcept>
#include <utility>

#include "errors/raise.h"
#include "reader/bracket_search.h"
#include "reader/schema_words.h"
#include "reader/time_comparison.h"

namespace zentor {

namespace {

// Searched and then written while it is still in the processor's cache.
constexpr std::size_t kPiece = std::size_t{1} << 18;

bool IsLater(ZT_Time a, ZT_Time b) { return std::int64_t{a.value} * b.scale > std::int64_t{b.value} * a.scale; }

// A set says when it begins and ends; both have to be times, and in this order, for anything to be found between them.
void CheckEnds(const SampleReader& reader, const SampleSet& set, const TimeForm& form) {
    const auto offsetOf = [&](std::uint64_t index) { return static_cast<std::int64_t>(set.OffsetOf(index)); };
    const std::uint64_t last = set.count - 1;
    if (!reader.FindTime(0)) Raise({kInvalidTimeValue, offsetOf(0)}, set.PlaceOf(0));
    if (!reader.FindTime(last) || IsEarlier(reader.TimeText(last), reader.TimeText(0), form)) {
        Raise({kInvalidTimeValueForId, offsetOf(last)}, Excerpt(set.id));
    }
}

// The first sample from which on `isPast` holds of the time.
template <class IsPast>
std::uint64_t FindFirst(const SampleReader& reader, std::uint64_t count, IsPast&& isPast) {
    std::uint64_t from = 0;
    while (from != count) {
        const std::uint64_t middle = from + (count - from) / 2;
        if (isPast(reader.TimeOf(middle))) {
            count = middle;
        } else {
            from = middle + 1;
        }
    }
    return from;
}

}  // namespace

std::vector<ZT_Sample> SampleRange::ReadAll() const {
    std::vector<ZT_Sample> samples;
    try {
        samples.reserve(Count());
        for (std::uint64_t place = 0; place < Count(); ++place) Read(place, samples.emplace_back());
    } catch (const std::bad_alloc&) {
        Raise(kSampleMemoryNotAvailable, "sample set id:" + Excerpt(set_.id));
    } catch (const std::length_error&) {
        Raise(kSampleMemoryNotAvailable, "sample set id:" + Excerpt(set_.id));
    }
    return samples;
}

std::size_t ZT_SampleDataProcessor::CopySamples(std::string_view bytes, std::size_t begin) {
    copy_.Create();
    std::size_t depth = 0;
    std::size_t offset = begin;
    do {
        const std::string_view piece = bytes.substr(offset, kPiece);
        if (piece.empty()) {
            Raise({kInvalidJson, static_cast<std::int64_t>(offset)}, Quoted(words::kDataDynamicSamples));
        }
        const std::size_t taken = FindClosingBracket(piece, depth);
        copy_.Write(piece.substr(0, taken));
        offset += taken;
    } while (depth != 0);
    copy_.Close();
    begin_ = begin;
    end_ = offset;
    return offset;
}

bool ZT_SampleDataProcessor::AddNode(const JsonValue& node) {
    const SampleSet set = DescribeSampleSet(node);
    return sets_.emplace(set.id, set).second;
}

void ZT_SampleDataProcessor::IndexSamples(std::string_view bytes, const TimeForm& form) {
    if (end_ == 0) return;
    for (auto& [id, set] : sets_) set.timeWidth = form.Width();
    IndexSampleSets(bytes, begin_, end_, sets_);
}

const SampleSet& ZT_SampleDataProcessor::RequireSamples(std::string_view id) const {
    const auto found = sets_.find(id);
    if (found == sets_.end()) Raise(kSampleIdNotFound, Excerpt(id));
    const SampleSet& set = found->second;
    if (set.state == SampleSet::State::kNoData) Raise(kSamplesNotFound, Excerpt(id));
    if (set.state == SampleSet::State::kPastEnd) {
        Raise({kInvalidSampleSetInfo, static_cast<std::int64_t>(set.start)}, Excerpt(id));
    }
    return set;
}

SampleRange ZT_SampleDataProcessor::FindRange(std::string_view bytes, std::string_view id, const TimeForm& form,
                                              ZT_Time start, ZT_Time end) const {
    const SampleSet& set = RequireSamples(id);
    const SampleReader reader(bytes, set, form);
    CheckEnds(reader, set, form);
    const bool isReversed = IsLater(start, end);
    if (isReversed) std::swap(start, end);
    const QueryTime from = form.At(start.value, start.scale);
    const QueryTime to = form.At(end.value, end.scale);
    const std::uint64_t first = FindFirst(reader, set.count, [&](const Instant& time) { return time >= from; });
    const std::uint64_t last = FindFirst(reader, set.count, [&](const Instant& time) { return time > to; });
    return {reader, set, first, std::max(first, last), isReversed};
}

SampleRange ZT_SampleDataProcessor::FindLatest(std::string_view bytes, std::string_view id, const TimeForm& form,
                                               ZT_Time time) const {
    const SampleSet& set = RequireSamples(id);
    const SampleReader reader(bytes, set, form);
    CheckEnds(reader, set, form);
    const QueryTime at = form.At(time.value, time.scale);
    const std::uint64_t end = FindFirst(reader, set.count, [&](const Instant& sample) { return sample > at; });
    return {reader, set, end == 0 ? 0 : end - 1, end, false};
}

std::optional<ZT_SampleDataProcessor::TimeSpan> ZT_SampleDataProcessor::FindTimeSpan(std::string_view bytes,
                                                                                     std::string_view id,
                                                                                     const TimeForm& form) const {
    const auto found = sets_.find(id);
    if (found == sets_.end() || found->second.state != SampleSet::State::kPresent) return std::nullopt;
    const SampleSet& set = found->second;
    const SampleReader reader(bytes, set, form);
    if (!reader.FindTime(0) || !reader.FindTime(set.count - 1)) return std::nullopt;
    return TimeSpan{std::string(reader.TimeText(0)), std::string(reader.TimeText(set.count - 1))};
}

}  // namespace zentor
