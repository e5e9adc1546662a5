#include <algorithm>
#include <limits>

#include "commands/commands.h"
#include "document_times.h"
#include "node_path.h"
#include "sample_output.h"
#include "time_argument.h"
#include "wrong_usage.h"

namespace zentor_cli {

namespace {

constexpr std::int32_t kFirstSecond = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kLastSecond = std::numeric_limits<std::int32_t>::max();
constexpr std::uint32_t kNoSamples = 21;

// The times that a person asks for; an end that is not there is open.
struct Bounds {
    std::optional<Moment> from;
    std::optional<Moment> to;

    bool Hold(const zentor::Instant& time) const {
        return (!from || time >= from->Get()) && (!to || time <= to->Get());
    }
};

// One node's samples, asked for and written.
class SampleQuery {
public:
    SampleQuery(const Document& document, const std::string& path, const TimeArguments& times, const TimeSpan& span,
                SampleOutput& output)
        : document_(document), path_(path), times_(times), span_(span), output_(output) {}

    // From the earliest to the latest, or back.
    void WriteBetween(const Bounds& bounds, bool isBack) {
        CheckReachable(bounds);
        ZT_Time start = bounds.from ? times_.AtOrBefore(*bounds.from) : ZT_Time{kFirstSecond, 1};
        ZT_Time end = bounds.to ? times_.AtOrAfter(*bounds.to) : ZT_Time{kLastSecond, 1};
        if (isBack) std::swap(start, end);
        document_.SamplesBetween(path_, start, end, [&](const Sample& sample) { WriteWithin(bounds, sample); });
        Finish();
    }

    // The latest sample at or before a time.
    void WriteAt(const Moment& moment) {
        CheckReachable({moment, moment});
        const Bounds bounds{std::nullopt, moment};
        if (moment.IsBroken()) WriteLatestOfSecond(moment, bounds);
        if (!isWritten_) {
            document_.SampleAt(path_, times_.AtOrBefore(moment),
                               [&](const Sample& sample) { WriteWithin(bounds, sample); });
        }
        Finish();
    }

private:
    void WriteLatestOfSecond(const Moment& moment, const Bounds& bounds) {
        try {
            document_.SamplesBetween(path_, times_.AtOrAfter(moment), times_.AtOrBefore(moment),
                                     [&](const Sample& sample) {
                                         if (!isWritten_) WriteWithin(bounds, sample);
                                     });
        } catch (const LibraryFailure& failure) {
            if (failure.report().code != kNoSamples) throw;
        }
    }

    void WriteWithin(const Bounds& bounds, const Sample& sample) {
        if (!bounds.Hold(times_.ParseSampleTime(sample.time))) return;
        output_.Add(sample);
        isWritten_ = true;
    }

    void Finish() {
        if (!isWritten_) throw LibraryFailure(Report{kNoSamples, "no samples in this range", -1, -1});
        output_.Finish();
    }

    // The library takes no dates outside 32 bits of seconds; a result that leaves some samples out would be wrong.
    void CheckReachable(const Bounds& bounds) const {
        if (!times_.AreDates() || span_.first.empty()) return;
        const std::int64_t first = times_.ParseSampleTime(span_.first).whole;
        const std::int64_t last = times_.ParseSampleTime(span_.last).whole;
        const bool isTooEarly = first < kFirstSecond && (!bounds.from || bounds.from->whole < kFirstSecond);
        const bool isTooLate = last >= kLastSecond && (!bounds.to || bounds.to->whole >= kLastSecond);
        if (!isTooEarly && !isTooLate) return;
        throw LibraryFailure("samples before 1901-12-13T20:45:52Z or after 2038-01-19T03:14:06Z cannot be asked for");
    }

    const Document& document_;
    const std::string& path_;
    const TimeArguments& times_;
    const TimeSpan& span_;
    SampleOutput& output_;
    bool isWritten_ = false;
};

std::string FormatOf(const CommonOptions& common, const SamplesOptions& options) {
    std::string format = options.format.value_or(common.json ? "json" : "text");
    if (common.json && format != "json") throw WrongUsage("--json excludes --format " + format);
    return format;
}

void WriteSamples(SampleQuery& query, const TimeArguments& times, const SamplesOptions& options) {
    if (options.at) {
        query.WriteAt(times.Parse("--at", *options.at));
        return;
    }
    Bounds bounds;
    if (options.from) bounds.from = times.Parse("--from", *options.from);
    if (options.to) bounds.to = times.Parse("--to", *options.to);
    const bool isBack = bounds.from && bounds.to && bounds.from->Get() > bounds.to->Get();
    if (isBack) std::swap(bounds.from, bounds.to);
    query.WriteBetween(bounds, isBack);
}

}  // namespace

void RunSamples(Library& library, const CommonOptions& common, const std::string& path, const std::string& nodePath,
                const SamplesOptions& options) {
    const std::string format = FormatOf(common, options);
    const auto document = OpenShowingProgress(library, common, path);
    const std::string dataPath = DataPathOf(*document, nodePath);
    const Leaf node = document->DynamicNode(dataPath);
    // A document that says nothing of times has no samples, and the query tells so, whatever the form.
    const zentor::TimeForm form =
        TimeFormOf(document->Info()).value_or(zentor::TimeForm(zentor::TimeForm::Utc{0, true}));
    const TimeArguments times(form, node.timeSpan.first);
    const auto output = MakeSampleOutput(format, node.dataType.arrayDisplayNames);
    SampleQuery query(*document, dataPath, times, node.timeSpan, *output);
    WriteSamples(query, times, options);
}

}  // namespace zentor_cli
