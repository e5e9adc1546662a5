#include <condition_variable>
#include <exception>
#include <mutex>
#include <optional>
#include <thread>

#include "commands/commands.h"
#include "conversion_plan.h"
#include "failure_text.h"
#include "json_output.h"
#include "output_file.h"
#include "progress.h"
#include "standard_input.h"
#include "standard_output.h"
#include "text_output.h"
#include "util/console.h"

namespace zentor_cli {

namespace {

struct Outcome {
    std::optional<Report> failure;
    std::uint64_t bytes = 0;
    std::vector<Notice> notices;
};

void SayNotices(const PlannedConversion& conversion, const std::vector<Notice>& notices) {
    for (const Notice& notice : notices) {
        std::string text = "zentor: " + Printable(conversion.input) + ": " + Printable(notice.message);
        if (notice.line > 0) text += " (first: line " + std::to_string(notice.line) + ')';
        zentor::os::WriteError(text + '\n');
    }
}

void WriteResult(const PlannedConversion& conversion, const Outcome& outcome) {
    JsonOutput json;
    json.BeginObject();
    json.Member("input", conversion.input);
    json.Member("output", conversion.output);
    json.Member("bytes", outcome.bytes);
    json.Key("notices");
    json.BeginArray();
    for (const Notice& notice : outcome.notices) {
        json.BeginObject();
        json.Member("kind", notice.kind);
        json.Member("message", notice.message);
        json.Member("count", notice.count);
        if (notice.line > 0) json.Member("line", notice.line);
        json.EndObject();
    }
    json.EndArray();
    json.EndObject();
    json.Finish();
}

void SayResult(const CommonOptions& common, const PlannedConversion& conversion, const Outcome& outcome) {
    if (common.json) {
        WriteResult(conversion, outcome);
    } else if (!common.quiet) {
        SayNotices(conversion, outcome.notices);
        WriteOutput(Printable(conversion.output) + " (" + std::to_string(outcome.bytes) + " bytes)\n");
    }
}

// What stands at the output path may be replaced, but not what comes there meanwhile.
Outcome Convert(Library& library, const PlannedConversion& conversion, const ConvertOptions& options) {
    Outcome outcome;
    Library::TakeNotices();
    try {
        CheckOutputPath(library, conversion.output, options.force || conversion.input == conversion.output);
        outcome.bytes = SaveDocument(library, conversion.input, conversion.output);
    } catch (const LibraryFailure& failure) {
        outcome.failure = failure.report();
    }
    outcome.notices = Library::TakeNotices();
    return outcome;
}

// Several conversions, some of them at once; what came of them is told in the order of the inputs.
class Conversions {
public:
    Conversions(Library& library, const CommonOptions& common, const ConvertOptions& options,
                const std::vector<PlannedConversion>& plan)
        : library_(library), common_(common), options_(options), plan_(plan), outcomes_(plan.size()) {}

    // Whether all went well.
    bool Run() {
        const zentor::os::OutputAside aside;  // the library may write there
        const std::size_t count = std::min<std::size_t>(std::max(options_.jobs, 1u), plan_.size());
        std::vector<std::thread> threads;
        try {
            while (threads.size() < count) threads.emplace_back(&Conversions::Work, this);
            const bool isGood = Tell();
            Join(threads);
            if (zentor::os::IsStopWanted()) throw Stopped();
            return isGood;
        } catch (...) {
            Join(threads);
            throw;
        }
    }

private:
    void Join(std::vector<std::thread>& threads) {
        isEnding_ = true;
        for (std::thread& thread : threads) thread.join();
        threads.clear();
    }

    void Work() {
        const Listener listener;
        for (;;) {
            const std::size_t which = next_++;
            if (which >= plan_.size() || isEnding_ || zentor::os::IsStopWanted()) return;
            std::optional<Outcome> outcome;
            std::exception_ptr thrown;
            try {
                outcome = Convert(library_, plan_[which], options_);
            } catch (const Stopped&) {
                isEnding_ = true;
            } catch (...) {
                thrown = std::current_exception();
            }
            const std::lock_guard lock(mutex_);
            if (thrown) thrown_ = thrown;
            if (outcome && outcome->failure && !options_.keepGoing) isEnding_ = true;
            outcomes_[which] = std::move(outcome);
            ++finished_;
            changed_.notify_all();
        }
    }

    bool Tell() {
        Progress progress(
            [this](int) {
                return "converting ... " + std::to_string(finished_) + " of " + std::to_string(plan_.size());
            },
            common_.quiet);
        bool isGood = true;
        for (std::size_t which = 0; which < plan_.size(); ++which) {
            const std::optional<Outcome> outcome = Await(which);
            if (!outcome) return false;
            progress.Pause([&] {
                if (outcome->failure) {
                    SayFailure(library_, common_, *outcome->failure, plan_[which].input, true);
                } else {
                    SayResult(common_, plan_[which], *outcome);
                }
            });
            isGood = isGood && !outcome->failure;
            if (!isGood && !options_.keepGoing) return false;
        }
        return isGood;
    }

    // Nothing when the work ended before.
    std::optional<Outcome> Await(std::size_t which) {
        std::unique_lock lock(mutex_);
        while (!outcomes_[which] && !thrown_) {
            const bool isTaken = which < next_;
            if ((isEnding_ && !isTaken) || zentor::os::IsStopWanted()) break;
            changed_.wait_for(lock, std::chrono::milliseconds(50));
        }
        if (thrown_) std::rethrow_exception(thrown_);
        return std::move(outcomes_[which]);
    }

    Library& library_;
    const CommonOptions& common_;
    const ConvertOptions& options_;
    const std::vector<PlannedConversion>& plan_;
    std::atomic<std::size_t> next_{0};
    std::atomic<std::size_t> finished_{0};
    std::atomic<bool> isEnding_{false};
    std::mutex mutex_;
    std::condition_variable changed_;
    std::vector<std::optional<Outcome>> outcomes_;
    std::exception_ptr thrown_;
};

void ConvertToStandardOutput(Library& library, const CommonOptions& common, const ConvertOptions& options,
                             const std::string& input) {
    Library::TakeNotices();
    std::optional<Stream> stream;
    {
        const Progress progress("converting " + input, common.quiet);
        stream.emplace(library, input, !options.noValidate);
    }
    if (!common.quiet) SayNotices({input, "-"}, Library::TakeNotices());
    WriteToStandardOutput(library, *stream);
}

}  // namespace

bool RunConvert(Library& library, const CommonOptions& common, const ConvertOptions& options) {
    std::vector<PlannedConversion> plan = PlanConversions(options);
    library.options().strict = options.noValidate ? 0 : 1;
    library.options().unread = options.noValidate ? 1 : 0;
    library.options().anySize = options.force ? 1 : 0;
    library.options().newOutput = options.force ? 0 : 1;
    std::optional<StandardInput> standardInput;
    std::string shownInput = plan.front().input;
    if (shownInput == "-") {
        standardInput.emplace(options.format);
        plan.front().input = standardInput->path();
        shownInput = "standard input";
    }
    if (plan.size() > 1) return Conversions(library, common, options, plan).Run();
    Outcome outcome;
    try {
        if (plan.front().output == "-") {
            ConvertToStandardOutput(library, common, options, plan.front().input);
            return true;
        }
        const zentor::os::OutputAside aside;
        const Progress progress("converting " + shownInput, common.quiet);
        outcome = Convert(library, plan.front(), options);
    } catch (const LibraryFailure& failure) {
        outcome.failure = failure.report();
    }
    if (standardInput) plan.front().input = shownInput;
    if (outcome.failure) {
        SayFailure(library, common, *outcome.failure, shownInput);
        return false;
    }
    SayResult(common, plan.front(), outcome);
    return true;
}

}  // namespace zentor_cli
