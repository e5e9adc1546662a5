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
#include "open_text.h"

namespace {

using namespace zentor;
using namespace zentor_fuzz;
using zentor_test::OpenText;

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
    SetCheck(const OpenText& document, NodeNumber node)
        : queries_(document.queries()),
          node_(node),
          form_(*document->timeForm),
          place_(document->samples.PlaceOf(document.index().DynamicNumber(node))),
          bytes_(document.bytes()) {}

    void Check(const OpenText& document, const std::vector<ZT_Time>& times) {
        if (place_.state != SamplePlace::State::kPresent) return CheckRefused();
        SampleSet set = document->outline.SampleSetOf(bytes_, document.index().DynamicNumber(node_));
        reader_.emplace(MakeSampleReader(bytes_, std::move(set), place_, form_));
        Scan();
        Require(queries_.DynamicDataInfo(node_).firstSampleTime.empty() == !(times_.front() && times_.back()));
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
    // A time that outlives the record from which it comes.
    struct Time {
        std::int64_t whole;
        std::string decimals;

        Instant Get() const { return {whole, decimals}; }
    };

    void CheckRefused() const {
        const Answer answer = AnswerOf([&] { return queries_.SampleAt(node_, {0, 1}).ReadAll(); });
        Require(answer.code == (place_.state == SamplePlace::State::kNoData ? 38 : 36));
        Require(answer.place == (answer.code == 38 ? -1 : static_cast<std::int64_t>(place_.start)));
    }

    void Scan() {
        for (std::uint64_t i = 0; i < reader_->set().count; ++i) {
            const auto time = reader_->FindTime(i);
            times_.push_back(time ? std::optional(Time{time->whole, std::string(time->decimals)}) : std::nullopt);
            if (!time || (i != 0 && times_[i - 1] && times_[i]->Get() < times_[i - 1]->Get())) isInOrder_ = false;
        }
    }

    // Those that the scan finds between two moments, from the first or from the last on.
    template <class IsIn>
    Answer Expected(bool isReversed, IsIn&& isIn) {
        std::vector<std::uint64_t> found;
        for (std::uint64_t i = 0; i < times_.size(); ++i) {
            if (isIn(times_[i]->Get())) found.push_back(i);
        }
        if (isReversed) std::reverse(found.begin(), found.end());
        return AnswerOf([&] {
            std::vector<ZT_Sample> samples;
            for (const std::uint64_t index : found) reader_->Read(index, samples.emplace_back());
            return samples;
        });
    }

    void CheckAnswer(const Answer& answer) const {
        Require(answer.code == 0 || answer.code == 39);
        Require(answer.samples.size() <= times_.size());
        if (answer.code == 39) {
            const std::uint64_t stride = reader_->set().layout.Width() + 1;
            Require((static_cast<std::uint64_t>(answer.place) - place_.start) % stride == 0);
        }
        for (const ZT_Sample& sample : answer.samples) {
            Instant time;
            Require(form_.ParseRecorded(sample.time, time));
        }
    }

    void CheckRange(ZT_Time start, ZT_Time end) {
        const Answer answer = AnswerOf([&] { return queries_.SamplesBetween(node_, start, end).ReadAll(); });
        CheckAnswer(answer);
        if (!isInOrder_) return;
        const bool isReversed = std::int64_t{start.value} * end.scale > std::int64_t{end.value} * start.scale;
        const QueryTime from = form_.At(isReversed ? end.value : start.value, isReversed ? end.scale : start.scale);
        const QueryTime to = form_.At(isReversed ? start.value : end.value, isReversed ? start.scale : end.scale);
        RequireSame(answer, Expected(isReversed, [&](const Instant& time) {
                        return Compare(time, from) >= 0 && Compare(time, to) <= 0;
                    }));
    }

    void CheckOne(ZT_Time time) {
        const Answer answer = AnswerOf([&] { return queries_.SampleAt(node_, time).ReadAll(); });
        CheckAnswer(answer);
        Require(answer.samples.size() <= 1);
        if (!isInOrder_) return;
        const QueryTime at = form_.At(time.value, time.scale);
        const auto after = std::find_if(times_.begin(), times_.end(),
                                        [&](const auto& sample) { return Compare(sample->Get(), at) > 0; });
        const bool isThere = after != times_.begin();
        Answer expected = AnswerOf([&] {
            std::vector<ZT_Sample> samples;
            if (isThere) reader_->Read(static_cast<std::uint64_t>(after - times_.begin()) - 1, samples.emplace_back());
            return samples;
        });
        RequireSame(answer, expected);
    }

    // Asks for a sample's own time; formatted, that is a time string that stands to all others as the time does.
    void CheckSampleTime(std::size_t index) {
        if (!times_[index]) return;
        const Instant instant = times_[index]->Get();
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
        const auto sign = [](int order) { return (order > 0) - (order < 0); };
        for (const auto& other : times_) {
            Require(!other || sign(Compare(other->Get(), at)) == sign(Compare(other->Get(), parsed)));
        }
    }

    const DocumentQueries& queries_;
    NodeNumber node_;
    const TimeForm& form_;
    SamplePlace place_;
    const DocumentBytes& bytes_;
    std::optional<SampleReader> reader_;
    std::vector<std::optional<Time>> times_;
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
    std::unique_ptr<VkjsonDocument> read = Open(copy.bytes(), input.choice);
    if (read == nullptr || !read->timeForm) return 0;
    const OpenText document(copy.bytes(), std::move(read));
    const std::vector<ZT_Time> times = TimesIn(input.rest);
    document.ForEachDynamic([&](NodeNumber node) { SetCheck(document, node).Check(document, times); });
    return 0;
}
