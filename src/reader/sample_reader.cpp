#include "reader/sample_reader.h"

#include <algorithm>

#include "errors/raise.h"
#include "reader/schema_words.h"
#include "reader/static_text.h"
#include "util/number_text.h"

namespace zentor {

namespace {

// Takes `expected` off the front of a text.
bool Take(std::string_view& text, std::string_view expected) {
    if (!text.starts_with(expected)) return false;
    text.remove_prefix(expected.size());
    return true;
}

// The text between quotes that is all there is.
bool Unquote(std::string_view& text) {
    if (text.size() < 2 || text.front() != '"' || text.back() != '"') return false;
    text = text.substr(1, text.size() - 2);
    return true;
}

// A number with nothing before or after it.
bool ReadPaddedNumber(std::string_view text, double& number) {
    const char* next = text.data();
    const char* const end = next + text.size();
    const bool isNegative = text.starts_with('-');
    if (isNegative || text.starts_with('+')) ++next;
    if (next == end || !(IsDigit(*next) || *next == '.')) return false;
    while (end - next > 1 && *next == '0' && IsDigit(next[1])) ++next;  // the padding, which would take long
    if (ParseNumber(next, end, number) != end) return false;
    if (isNegative) number = -number;
    return true;
}

}  // namespace

void SampleReader::RaiseAt(const ErrorEntry& entry, std::uint64_t index) const {
    Raise({entry, static_cast<std::int64_t>(set_.OffsetOf(index))}, set_.PlaceOf(index));
}

std::optional<Instant> SampleReader::FindTime(std::uint64_t index) {
    const std::string_view record = window_.Record(index);
    Instant time;
    const bool isTime = record.starts_with(kRecordStart) &&
                        record.substr(kRecordStart.size() + set_.timeWidth).starts_with('"') &&
                        form_.ParseRecorded(record.substr(kRecordStart.size(), set_.timeWidth), time);
    return isTime ? std::optional(time) : std::nullopt;
}

Instant SampleReader::TimeOf(std::uint64_t index) {
    const std::optional<Instant> time = FindTime(index);
    if (time) return *time;
    RaiseFault(FaultOf(index), index);
    RaiseAt(kInvalidSampleTime, index);
}

SampleReader::Fault SampleReader::FaultOf(std::uint64_t index) {
    std::string_view record = window_.Record(index);
    const bool isLast = index + 1 == set_.count;
    const char next = record.back();
    Instant time;
    // Nearly all of them have the form of the first look.
    const std::size_t afterTime = kRecordStart.size() + set_.timeWidth;
    if (record.starts_with(kRecordStart) && record.substr(afterTime).starts_with(kRecordMiddle) &&
        record[record.size() - 2] == kRecordEnd.front() && next == (isLast ? ']' : ',') &&
        form_.ParseRecorded(record.substr(kRecordStart.size(), set_.timeWidth), time)) {
        return Fault::kNone;
    }
    record.remove_suffix(1);
    if (!record.ends_with(kRecordEnd) || next != (isLast ? ']' : ',')) return Fault::kForm;
    if (!Take(record, "{")) return Fault::kForm;
    if (!Take(record, "\"time\":")) return Fault::kNoTimeKey;
    if (!Take(record, "\"")) return Fault::kTime;
    if (!form_.ParseRecorded(record.substr(0, set_.timeWidth), time)) return Fault::kTime;
    record.remove_prefix(set_.timeWidth);
    if (!Take(record, "\",")) return Fault::kForm;
    return Take(record, "\"value\":") ? Fault::kNone : Fault::kNoValueKey;
}

void SampleReader::RaiseFault(Fault fault, std::uint64_t index) const {
    const auto raiseMissing = [&](std::string_view key) {
        Raise({kMissingSampleProperty, static_cast<std::int64_t>(set_.OffsetOf(index))}, key, set_.PlaceOf(index));
    };
    switch (fault) {
        case Fault::kNone:
            return;
        case Fault::kForm:
            RaiseAt(kInvalidSample, index);
        case Fault::kNoTimeKey:
            raiseMissing("time");
            break;
        case Fault::kTime:
            RaiseAt(kInvalidSampleTime, index);
        case Fault::kNoValueKey:
            raiseMissing(words::kValue);
    }
}

void SampleReader::Read(std::uint64_t index, ZT_Sample& sample) {
    RaiseFault(FaultOf(index), index);
    std::string_view record = window_.Record(index);
    record.remove_suffix(1);
    sample.time.assign(record, kRecordStart.size(), set_.timeWidth);
    const std::size_t before = kRecordStart.size() + set_.timeWidth + kRecordMiddle.size();
    const std::string_view value = record.substr(before, record.size() - before - kRecordEnd.size());
    switch (set_.kind) {
        case SampleKind::kNumber:
            sample.value = ReadNumber(index, value);
            break;
        case SampleKind::kNumberArray:
            if (auto* const numbers = boost::get<std::vector<double>>(&sample.value)) {
                ReadNumberArray(index, value, *numbers);
            } else {
                std::vector<double> fresh;
                ReadNumberArray(index, value, fresh);
                sample.value = std::move(fresh);
            }
            break;
        default:
            sample.value = ReadPaddedString(index, value);
            break;
    }
}

double SampleReader::ReadNumber(std::uint64_t index, std::string_view quoted) const {
    double number = 0;
    if (!Unquote(quoted) || !ReadPaddedNumber(quoted, number)) RaiseAt(kInvalidSampleValue, index);
    return number;
}

void SampleReader::ReadNumberArray(std::uint64_t index, std::string_view value, std::vector<double>& numbers) const {
    numbers.clear();
    numbers.reserve(set_.arraySize);
    if (!Take(value, "[")) RaiseAt(kInvalidSampleValue, index);
    while (numbers.size() < set_.arraySize) {
        if (!numbers.empty() && !Take(value, ",")) {
            RaiseAt(value.starts_with(']') ? kInvalidArrayCount : kInvalidSampleValue, index);
        }
        std::size_t end = 0;
        while (end != value.size() && value[end] != ',' && value[end] != ']') ++end;
        if (value.starts_with(']')) RaiseAt(kInvalidArrayCount, index);
        numbers.push_back(ReadNumber(index, value.substr(0, end)));
        value.remove_prefix(end);
    }
    if (value != "]") RaiseAt(kInvalidSampleValue, index);
}

std::string SampleReader::ReadPaddedString(std::uint64_t index, std::string_view value) const {
    if (!Take(value, kPaddedStart)) RaiseAt(kInvalidSampleValue, index);
    const std::size_t quotes = set_.place.hasQuotedLength ? 2 : 0;
    std::string_view digits = value.substr(0, set_.lengthDigits + quotes);
    value.remove_prefix(digits.size());
    if (set_.place.hasQuotedLength && !Unquote(digits)) RaiseAt(kInvalidSampleValue, index);
    double length = 0;
    const bool isLength = !digits.empty() && std::all_of(digits.begin(), digits.end(), IsDigit) &&
                          ParseNumber(digits.data(), digits.data() + digits.size(), length) != nullptr;
    if (!isLength || !Take(value, kPaddedMiddle) || !value.ends_with(kPaddedEnd)) RaiseAt(kInvalidSampleValue, index);
    if (length > static_cast<double>(set_.maxLength)) {
        Raise({kInvalidPaddedStringLength, static_cast<std::int64_t>(set_.OffsetOf(index))});
    }
    return CutPaddedText(value.substr(0, set_.maxLength), length);
}

void SampleReader::CheckAll() {
    window_.Limit(0, set_.count);
    ZT_Sample sample;
    std::string previous;
    for (std::uint64_t index = 0; index < set_.count; ++index) {
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
    set.timeWidth = form.Width();
    const std::uint64_t size = bytes.Size();
    if (set.count == 0 || place.start >= size || set.Size() >= size - place.start) Raise(kCorruptFile);
    return {bytes, std::move(set), form};
}

}  // namespace zentor
