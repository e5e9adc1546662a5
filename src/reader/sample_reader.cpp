#include "reader/sample_reader.h"

#include "errors/progress.h"
#include "errors/raise.h"
#include "format/words.h"
#include "reader/text_values.h"

namespace zentor {

void SampleReader::RaiseAt(const ErrorEntry& entry, std::uint64_t index) const {
    Raise({entry, static_cast<std::int64_t>(set_.OffsetOf(index))}, set_.PlaceOf(index));
}

std::optional<Instant> SampleReader::FindTime(std::uint64_t index) {
    const std::string_view text = set_.layout.TimeIn(window_.Record(index));
    Instant time;
    return !text.empty() && form_.ParseRecorded(text, time) ? std::optional(time) : std::nullopt;
}

Instant SampleReader::TimeOf(std::uint64_t index) {
    const std::optional<Instant> time = FindTime(index);
    if (time) return *time;
    RaiseFault(FaultOf(index), index);
    RaiseAt(kInvalidSampleTime, index);
}

RecordFault SampleReader::TakeApart(std::uint64_t index, RecordParts& parts) {
    std::string_view record = window_.Record(index);
    const bool isLast = index + 1 == set_.count;
    if (record.back() != (isLast ? ']' : ',')) return RecordFault::kForm;
    record.remove_suffix(1);
    const RecordFault fault = set_.layout.TakeApart(record, parts);
    Instant time;
    const bool isTime = parts.time.empty() || form_.ParseRecorded(parts.time, time);
    return isTime ? fault : RecordFault::kTime;
}

void SampleReader::RaiseFault(RecordFault fault, std::uint64_t index) const {
    const auto raiseMissing = [&](std::string_view key) {
        Raise({kMissingSampleProperty, static_cast<std::int64_t>(set_.OffsetOf(index))}, key, set_.PlaceOf(index));
    };
    switch (fault) {
        case RecordFault::kNone:
            return;
        case RecordFault::kForm:
            RaiseAt(kInvalidSample, index);
        case RecordFault::kNoTimeKey:
            raiseMissing(words::kTime);
            break;
        case RecordFault::kTime:
            RaiseAt(kInvalidSampleTime, index);
        case RecordFault::kNoValueKey:
            raiseMissing(words::kValue);
    }
}

void SampleReader::Read(std::uint64_t index, ZT_Sample& sample) {
    RecordParts record;
    RaiseFault(TakeApart(index, record), index);
    sample.time.assign(record.time);
    switch (set_.layout.kind) {
        case SampleKind::kNumber: {
            double number = 0;
            if (!ReadPaddedNumber(record.value, number)) RaiseAt(kInvalidSampleValue, index);
            sample.value = number;
            break;
        }
        case SampleKind::kNumberArray:
            if (auto* const numbers = boost::get<std::vector<double>>(&sample.value)) {
                ReadNumberArray(index, record.value, *numbers);
            } else {
                std::vector<double> fresh;
                ReadNumberArray(index, record.value, fresh);
                sample.value = std::move(fresh);
            }
            break;
        default:
            sample.value = ReadPaddedString(index, record.value);
            break;
    }
}

void SampleReader::ReadNumberArray(std::uint64_t index, std::string_view value, std::vector<double>& numbers) const {
    numbers.clear();
    numbers.reserve(set_.layout.arraySize);
    const auto take = [&numbers](std::string_view element) {
        double number = 0;
        if (!ReadPaddedNumber(element, number)) return false;
        numbers.push_back(number);
        return true;
    };
    const ValueFault fault = TakeElements(value, set_.layout.arraySize, take);
    if (fault != ValueFault::kNone) {
        RaiseAt(fault == ValueFault::kCount ? kInvalidArrayCount : kInvalidSampleValue, index);
    }
}

std::string SampleReader::ReadPaddedString(std::uint64_t index, std::string_view value) const {
    std::string_view text;
    double length = 0;
    switch (TakePaddedString(value, set_.layout, text, length)) {
        case ValueFault::kNone:
            return CutPaddedText(text, length);
        case ValueFault::kLength:
            Raise({kInvalidPaddedStringLength, static_cast<std::int64_t>(set_.OffsetOf(index))});
        default:
            RaiseAt(kInvalidSampleValue, index);
    }
}

void SampleReader::CheckAll() {
    constexpr std::uint64_t kReportedAtOnce = 0x1000;
    window_.Limit(0, set_.count);
    ZT_Sample sample;
    std::string previous;
    for (std::uint64_t index = 0; index < set_.count; ++index) {
        if (index % kReportedAtOnce == 0) ReportProgress();
        Read(index, sample);
        Instant before;
        Instant time;
        form_.ParseRecorded(sample.time, time);
        if (index != 0 && form_.ParseRecorded(previous, before) && time < before) RaiseAt(kInvalidTimeValue, index);
        previous.swap(sample.time);
    }
}

SampleReader MakeSampleReader(const DocumentBytes& bytes, SampleSet set, const SamplePlace& place,
                              const TimeForm& form) {
    set.place = place;
    set.layout.hasQuotedLength = place.hasQuotedLength;
    set.layout.timeWidth = form.Width();
    const std::uint64_t size = bytes.Size();
    if (set.count == 0 || place.start >= size || set.Size() >= size - place.start) Raise(kCorruptFile);
    return {bytes, std::move(set), form};
}

}  // namespace zentor
