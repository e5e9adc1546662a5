#include "reader/document_queries.h"

#include <utility>

#include "errors/raise.h"
#include "reader/time_search.h"

namespace zentor {

namespace {

bool IsLater(ZT_Time a, ZT_Time b) { return std::int64_t{a.value} * b.scale > std::int64_t{b.value} * a.scale; }

}  // namespace

ZT_GroupChildInfo DocumentQueries::GroupChildInfo(NodeNumber node) const {
    NodeValues values(bytes_);
    outline_.Read(node, values);
    return GroupChildInfoOf(values);
}

ZT_StaticDataInfo DocumentQueries::StaticDataInfo(NodeNumber node) const {
    NodeValues values(bytes_);
    outline_.Read(node, values);
    return StaticDataInfoOf(values);
}

ZT_DynamicDataInfo DocumentQueries::DynamicDataInfo(NodeNumber node) const {
    NodeValues values(bytes_);
    outline_.Read(node, values);
    ZT_DynamicDataInfo info = DynamicDataInfoOf(values);
    if (!document_.timeForm) return info;
    const SamplePlace place = document_.samples.PlaceOf(outline_.index().DynamicNumber(node));
    if (place.state != SamplePlace::State::kPresent) return info;
    SampleReader reader = MakeSampleReader(bytes_, DescribeSampleSet(values.values()), place, *document_.timeForm);
    if (!reader.FindTime(0)) return info;
    std::string first = reader.TimeText(0);
    const std::uint64_t last = reader.set().count - 1;
    if (!reader.FindTime(last)) return info;
    info.firstSampleTime = std::move(first);
    info.lastSampleTime = reader.TimeText(last);
    return info;
}

std::shared_ptr<const KnownSamples> DocumentQueries::SamplesOf(NodeNumber node) const {
    const OutlineIndex& index = outline_.index();
    RequireType(index.TypeOf(node), ZT_NODE_DYNAMIC);
    const std::uint64_t number = index.DynamicNumber(node);
    if (auto known = known_->Find(number)) return known;
    SampleSet set = outline_.SampleSetOf(bytes_, number);
    const SamplePlace place = document_.samples.PlaceOf(number);
    if (!document_.timeForm || place.state == SamplePlace::State::kNoData) Raise(kSamplesNotFound, Excerpt(set.id));
    if (place.state == SamplePlace::State::kPastEnd) {
        Raise({kInvalidSampleSetInfo, static_cast<std::int64_t>(place.start)}, Excerpt(set.id));
    }
    SampleReader reader = MakeSampleReader(bytes_, std::move(set), place, *document_.timeForm);
    auto runs = FindRuns(reader);
    auto found = std::make_shared<const KnownSamples>(KnownSamples{reader.set(), std::move(runs)});
    known_->Keep(number, found);
    return found;
}

SampleRange DocumentQueries::SamplesBetween(NodeNumber node, ZT_Time start, ZT_Time end) const {
    const auto samples = SamplesOf(node);
    const TimeForm& form = *document_.timeForm;
    SampleReader reader(bytes_, samples->set, form);
    const bool isReversed = IsLater(start, end);
    if (isReversed) std::swap(start, end);
    const auto spans = TimeSearch(reader, samples->runs)
                           .FindRange(form.At(start.value, start.scale), form.At(end.value, end.scale));
    return {std::move(reader), spans, isReversed};
}

SampleRange DocumentQueries::SampleAt(NodeNumber node, ZT_Time time) const {
    const auto samples = SamplesOf(node);
    SampleReader reader(bytes_, samples->set, *document_.timeForm);
    const auto spans =
        TimeSearch(reader, samples->runs).FindLatest(document_.timeForm->At(time.value, time.scale));
    return {std::move(reader), spans, false};
}

void DocumentQueries::CheckSamples() const {
    if (!document_.timeForm) return;
    const OutlineIndex& index = outline_.index();
    for (std::uint64_t number = 0; number < index.DynamicCount(); ++number) {
        const SamplePlace place = document_.samples.PlaceOf(number);
        if (place.state == SamplePlace::State::kNoData) continue;
        SampleSet set = outline_.SampleSetOf(bytes_, number);
        if (place.state == SamplePlace::State::kPastEnd) {
            Raise({kInvalidSampleSetInfo, static_cast<std::int64_t>(place.start)}, Excerpt(set.id));
        }
        MakeSampleReader(bytes_, std::move(set), place, *document_.timeForm).CheckAll();
    }
}

}  // namespace zentor
