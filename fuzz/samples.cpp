// Fuzzing: whatever the bytes of a document are, asking for its samples gives those that a scan over the set finds, or
// an error.
//
// The rest of an input are the times of queries, eight bytes each.
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "document.h"

namespace {

using namespace zentor;
using namespace zentor_fuzz;

// Samples, or what was raised instead of them.
struct Answer {
    std::vector<ZT_Sample> samples;
    std::uint32_t code = 0;
    std::string message;
    std::int64_t place = -1;
};

template <class Ask>
Answer AnswerOf(Ask&& ask) {
    Answer answer;
    try {
        answer.samples = ask();
    } catch (const ns_sensor::ZT_Exception& failure) {
        answer = {{}, failure.code(), failure.what(), failure.extra1()};
    }
    return answer;
}

void RequireSame(const Answer& a, const Answer& b) {
    Require(a.code == b.code && a.message == b.message && a.place == b.place);
    Require(std::equal(a.samples.begin(), a.samples.end(), b.samples.begin(), b.samples.end(),
                       [](const ZT_Sample& x, const ZT_Sample& y) { return x.time == y.time && x.value == y.value; }));
}

// One set, and queries of it.
class SetCheck {
public:
    SetCheck(const VkjsonDocument& document, std::string_view bytes, const SampleSet& set)
        : samples_(document.samples), form_(*document.timeForm), bytes_(bytes), set_(set), reader_(bytes, set, form_) {}

    void Check(const std::vector<ZT_Time>& times) {
        if (set_.state != SampleSet::State::kPresent) return CheckRefused();
        Require(set_.OffsetOf(set_.count) <= bytes_.size() && bytes_[set_.OffsetOf(set_.count) - 1] == ']');
        Scan();
        const auto span = samples_.FindTimeSpan(bytes_, set_.id, form_);
        Require(span.has_value() == (times_.front() && times_.back()));
        constexpr ZT_Time kBegin = {std::numeric_limits<std::int32_t>::min(), 1};
        constexpr ZT_Time kEnd = {std::numeric_limits<std::int32_t>::max(), 1};
        CheckRange(kBegin, kEnd);
        for (std::size_t i = 0; i < times.size(); ++i) {
            CheckRange(times[i], times[(i + 1) % times.size()]);
            CheckOne(times[i]);
        }
        for (std::size_t i = 0; i < times_.size(); i += 1 + times_.size() / 16) CheckSampleTime(i);
    }

private:
    void CheckRefused() const {
        const Answer answer = AnswerOf([&] { return samples_.FindLatest(bytes_, set_.id, form_, {0, 1}).ReadAll(); });
        Require(answer.code == (set_.state == SampleSet::State::kNoData ? 38 : 36));
        Require(answer.place == (answer.code == 38 ? -1 : static_cast<std::int64_t>(set_.start)));
    }

    void Scan() {
        for (std::uint64_t i = 0; i < set_.count; ++i) {
            times_.push_back(reader_.FindTime(i));
            if (!times_.back() || (i != 0 && times_[i - 1] && *times_.back() < *times_[i - 1])) isInOrder_ = false;
        }
    }

    // Those that the scan finds between two moments, from the first or from the last on.
    template <class IsIn>
    Answer Expected(bool isReversed, IsIn&& isIn) const {
        std::vector<std::uint64_t> found;
        for (std::uint64_t i = 0; i < set_.count; ++i) {
            if (isIn(*times_[i])) found.push_back(i);
        }
        if (isReversed) std::reverse(found.begin(), found.end());
        return AnswerOf([&] {
            std::vector<ZT_Sample> samples;
            for (const std::uint64_t index : found) reader_.Read(index, samples.emplace_back());
            return samples;
        });
    }

    void CheckAnswer(const Answer& answer) const {
        Require(answer.code == 0 || answer.code == 39);
        Require(answer.samples.size() <= set_.count);
        if (answer.code == 39)
            Require((static_cast<std::uint64_t>(answer.place) - set_.start) % (set_.RecordWidth() + 1) == 0);
        for (const ZT_Sample& sample : answer.samples) {
            Instant time;
            Require(form_.Parse(sample.time, time));
        }
    }

    void CheckRange(ZT_Time start, ZT_Time end) const {
        const Answer answer =
            AnswerOf([&] { return samples_.FindRange(bytes_, set_.id, form_, start, end).ReadAll(); });
        CheckAnswer(answer);
        if (!isInOrder_) return;
        const bool isReversed = std::int64_t{start.value} * end.scale > std::int64_t{end.value} * start.scale;
        const QueryTime from = form_.At(isReversed ? end.value : start.value, isReversed ? end.scale : start.scale);
        const QueryTime to = form_.At(isReversed ? start.value : end.value, isReversed ? start.scale : end.scale);
        RequireSame(answer, Expected(isReversed, [&](const Instant& time) { return time >= from && time <= to; }));
    }

    void CheckOne(ZT_Time time) const {
        const Answer answer = AnswerOf([&] { return samples_.FindLatest(bytes_, set_.id, form_, time).ReadAll(); });
        CheckAnswer(answer);
        Require(answer.samples.size() <= 1);
        if (!isInOrder_) return;
        const QueryTime at = form_.At(time.value, time.scale);
        const auto after = std::find_if(times_.begin(), times_.end(), [&](const auto& sample) { return *sample > at; });
        const std::optional<Instant> latest = after == times_.begin() ? std::nullopt : *(after - 1);
        Answer expected = AnswerOf([&] {
            std::vector<ZT_Sample> samples;
            if (latest) reader_.Read(static_cast<std::uint64_t>(after - times_.begin()) - 1, samples.emplace_back());
            return samples;
        });
        RequireSame(answer, expected);
    }

    // Asks for a sample's own time; formatted, that is a time string that stands to all others as the time does.
    void CheckSampleTime(std::size_t index) const {
        if (!times_[index]) return;
        const Instant& instant = *times_[index];
        ZT_Time time = {static_cast<std::int32_t>(instant.whole), 1};
        if (form_.Rate() != nullptr) {
            const TimeValue begin = TimeOfFrame(instant.whole, *form_.Rate());
            time = {begin.numerator, begin.denominator};
        } else if (time.value != instant.whole) {
            return;
        }
        CheckRange(time, time);
        CheckOne(time);
        char text[TimeForm::kWidestFormatted];
        Instant formatted;
        const char* const end = form_.Format(time.value, time.scale, text, formatted);
        if (end == nullptr) return;
        Instant parsed;
        Require(form_.Parse({text, static_cast<std::size_t>(end - text)}, parsed) && parsed == formatted);
        const QueryTime at = form_.At(time.value, time.scale);
        for (const auto& other : times_) Require(!other || (*other <=> at) == (*other <=> parsed));
    }

    const ZT_SampleDataProcessor& samples_;
    const TimeForm& form_;
    std::string_view bytes_;
    const SampleSet& set_;
    SampleReader reader_;
    std::vector<std::optional<Instant>> times_;
    bool isInOrder_ = true;
};

std::vector<ZT_Time> TimesIn(std::string_view bytes) {
    std::vector<ZT_Time> times;
    for (; bytes.size() >= sizeof(ZT_Time) && times.size() < 8; bytes.remove_prefix(sizeof(ZT_Time))) {
        ZT_Time time;
        std::memcpy(&time, bytes.data(), sizeof time);
        time.scale = std::max(time.scale, 1U);  // a scale of 0 never gets here
        times.push_back(time);
    }
    return times;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const Input input({reinterpret_cast<const char*>(data), size});
    const ExactCopy copy(input.document);
    const std::unique_ptr<VkjsonDocument> document = Open(copy.bytes(), input.choice);
    if (document == nullptr || !document->timeForm) return 0;
    const std::vector<ZT_Time> times = TimesIn(input.rest);
    for (const auto& [id, set] : document->samples.Sets()) SetCheck(*document, copy.bytes(), set).Check(times);
    return 0;
}
