// zentor: the command. Exit status 0; 1 for a failure that the library reported; 2 for wrong usage.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <functional>
#include <new>
#include <numeric>
#include <sstream>

#include "commands/commands.h"
#include "failure_text.h"
#include "help.h"
#include "standard_output.h"
#include "text_output.h"
#include "util/console.h"
#include "wrong_usage.h"

namespace zentor_cli {

namespace {

constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

// The command that the arguments ask for; false when it found something wrong and has said what.
using Command = std::function<bool(Library&)>;

struct Arguments {
    CommonOptions common;
    ConvertOptions convert;
    SamplesOptions samples;
    bool loadPlugins = false;
    std::string helpTopic;
    bool asManual = false;
    std::string completion;
    std::string document;
    std::string dataPath;
    std::vector<std::string> documents;
};

void AddCommonOptions(CLI::App& app, CommonOptions& common) {
    app.add_flag("--json", common.json, "Print the result as JSON");
    app.add_flag("--quiet", common.quiet, "Show no progress and no summary");
    app.add_option("--locale", common.locale, "Language of messages, e.g. en_US");
    app.add_flag("--private-copy", common.privateCopy, "Read documents from a copy that nobody else can change");
    app.add_flag("--faithful", common.faithful, "Convert so that all texts and numbers come back as they went in");
    app.add_option("--as", common.converter,
                   "Convert with this converter, e.g. csv or an identifier of zentor plugins");
    app.add_option("--set", common.parameters, "A parameter of the converter, KEY=VALUE; as often as there are any")
        ->allow_extra_args(false);
    app.set_version_flag("--version", "zentor " ZENTOR_VERSION);
    app.require_subcommand(1);
    app.fallthrough();
    app.allow_windows_style_options(false);  // a path may begin with a slash everywhere
}

void AddConvert(CLI::App& app, const CommonOptions& common, ConvertOptions& convert, Command& chosen) {
    CLI::App* command = app.add_subcommand("convert", "Convert a recording into a vkjson document");
    command->add_option("INPUT", convert.inputs, "Recordings, or - for standard input")->required();
    command->add_option(
        "-o,--output", convert.output,
        "The document, a folder for it, or - for standard output (default: INPUT's name with .vkjson, here)");
    command->add_option("--format", convert.format, "The format of standard input, e.g. csv");
    command->add_option("--jobs", convert.jobs, "How many inputs are converted at once")->check(CLI::Range(1, 1024));
    command->add_flag("--keep-going", convert.keepGoing, "Convert the other inputs when one fails");
    command->add_flag("--force", convert.force, "Replace the document if it exists");
    command->add_flag("--no-validate", convert.noValidate, "Do not read the document back");
    command->callback([&] { chosen = [&](Library& library) { return RunConvert(library, common, convert); }; });
}

// A command that reads one document.
template <class Run>
CLI::App* AddReader(CLI::App& app, const char* name, const char* help, Arguments& arguments, Command& chosen, Run run) {
    CLI::App* command = app.add_subcommand(name, help);
    command->add_option("DOC", arguments.document, "A document, or a recording")->required();
    command->callback([&chosen, run] {
        chosen = [run](Library& library) {
            run(library);
            return true;
        };
    });
    return command;
}

void AddSamples(CLI::App& app, Arguments& arguments, Command& chosen) {
    SamplesOptions& options = arguments.samples;
    CLI::App* command = AddReader(app, "samples", "Show samples of a node", arguments, chosen, [&](Library& library) {
        RunSamples(library, arguments.common, arguments.document, arguments.dataPath, arguments.samples);
    });
    command->add_option("PATH", arguments.dataPath, "The node, e.g. [0][2], [\"data1\"] or Hips/ROTATION")->required();
    CLI::Option* from = command->add_option("--from", options.from,
                                            "Where to begin: seconds (1.5, 3/2, -2), or a time as the document has it");
    CLI::Option* to = command->add_option("--to", options.to, "Where to end; before --from: the latest come first");
    command->add_option("--at", options.at, "Only the latest sample at or before this time")->excludes(from, to);
    command->add_option("--format", options.format, "Default: text")->check(CLI::IsMember({"text", "csv", "json"}));
}

void AddCommands(CLI::App& app, Arguments& arguments, Command& chosen) {
    const CommonOptions& common = arguments.common;
    CLI::App* formats = app.add_subcommand("formats", "List the formats that can be converted");
    formats->callback([&] {
        chosen = [&](Library& library) {
            RunFormats(library, common);
            return true;
        };
    });
    CLI::App* plugins = app.add_subcommand("plugins", "List the plug-ins that were found, and what is wrong with them");
    plugins->add_flag("--load", arguments.loadPlugins, "Load each of them, and say why one fails");
    plugins->callback(
        [&] { chosen = [&](Library& library) { return RunPlugins(library, common, arguments.loadPlugins); }; });
    AddConvert(app, common, arguments.convert, chosen);
    AddReader(app, "info", "Show what a document is and how much it holds", arguments, chosen,
              [&](Library& library) { RunInfo(library, common, arguments.document); });
    AddReader(app, "tree", "Show the outline of a document", arguments, chosen, [&](Library& library) {
        RunTree(library, common, arguments.document, arguments.dataPath);
    })->add_option("PATH", arguments.dataPath, "Only what is below this group, e.g. [0] or Hips");
    AddReader(app, "get", "Show one node in full", arguments, chosen,
              [&](Library& library) { RunGet(library, common, arguments.document, arguments.dataPath); })
        ->add_option("PATH", arguments.dataPath, "The node, e.g. [0][2], [\"data1\"] or Hips/ROTATION")
        ->required();
    AddSamples(app, arguments, chosen);
    CLI::App* validate = app.add_subcommand("validate", "Say of each document whether it is good");
    validate->add_option("DOC", arguments.documents, "Documents, or recordings")->required();
    validate->callback(
        [&] { chosen = [&](Library& library) { return RunValidate(library, common, arguments.documents); }; });
}

// How many letters have to be changed, added or left out to make one word of the other.
std::size_t Distance(std::string_view left, std::string_view right) {
    std::vector<std::size_t> row(right.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < left.size(); ++i) {
        std::size_t diagonal = row[0]++;
        for (std::size_t k = 0; k < right.size(); ++k) {
            const std::size_t replaced = diagonal + (left[i] == right[k] ? 0 : 1);
            diagonal = row[k + 1];
            row[k + 1] = std::min({replaced, row[k] + 1, row[k + 1] + 1});
        }
    }
    return row.back();
}

// What the command is called that was probably meant; all of them when none is near.
std::string NearestCommand(const CLI::App& app, const std::string& word) {
    std::string all;
    const CLI::App* nearest = nullptr;
    std::size_t least = std::max<std::size_t>(word.size() / 3, 1) + 1;
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; })) {
        all += (all.empty() ? "" : ", ") + command->get_name();
        const std::size_t distance = Distance(word, command->get_name());
        if (distance >= least) continue;
        least = distance;
        nearest = command;
    }
    return nearest == nullptr ? "; there are " + all : "; did you mean \"" + nearest->get_name() + "\"?";
}

// Tells what is wrong with the arguments, or what was asked for about them; returns the exit status.
int SayUsage(const CLI::App& app, const CLI::ParseError& error, const std::vector<std::string>& arguments) {
    const auto word = std::find_if(arguments.begin(), arguments.end(),
                                   [](const std::string& argument) { return !argument.starts_with('-'); });
    if (error.get_exit_code() != 0 && app.get_subcommands().empty() && word != arguments.end()) {
        zentor::os::WriteError("zentor: there is no command \"" + Printable(*word) + '"' + NearestCommand(app, *word) +
                               '\n');
        return kWrongUsage;
    }
    std::ostringstream out, err;
    out.exceptions(std::ios::badbit);  // or want of memory is swallowed
    err.exceptions(std::ios::badbit);
    const int status = app.exit(error, out, err);
    zentor::os::WriteOutput(out.str());
    zentor::os::FlushOutput();
    const std::string said = err.str();  // which repeats arguments
    std::string shown;
    for (std::size_t begin = 0; begin < said.size();) {
        const std::size_t end = std::min(said.find('\n', begin), said.size());
        shown += Printable(said.substr(begin, end - begin)) + '\n';
        begin = end + 1;
    }
    zentor::os::WriteError(shown);
    return status == 0 ? 0 : kWrongUsage;
}

// Help needs no library, and is given even where that cannot be used.
void AddHelp(CLI::App& app, Arguments& arguments, std::string& help) {
    CLI::App* command = app.add_subcommand("help", "Show what a command does, with examples");
    CLI::Option* topic = command->add_option("COMMAND", arguments.helpTopic, "The command (default: all)");
    command->add_flag("--man", arguments.asManual, "Print the manual page")->group("");
    command->add_option("--completion", arguments.completion, "Print the completion script of a shell")
        ->check(CLI::IsMember({"bash", "zsh", "fish"}))
        ->group("");
    command->callback([&app, &arguments, &help, topic] {
        if (arguments.asManual) {
            help = ManPage(app);
        } else if (!arguments.completion.empty()) {
            help = CompletionScript(app, arguments.completion);
        } else if (topic->count() == 0) {
            help = HelpText(app, nullptr);
        } else {
            const auto asked =
                app.get_subcommands([&](const CLI::App* other) { return other->get_name() == arguments.helpTopic; });
            if (asked.empty()) throw CLI::ExtrasError("help", {arguments.helpTopic});
            help = HelpText(app, asked.front());
        }
    });
}

int Run(const std::vector<std::string>& arguments) {
    CLI::App app("Turns sensor and motion recordings into vkjson documents.", "zentor");
    Arguments given;
    Command chosen;
    AddCommonOptions(app, given.common);
    AddCommands(app, given, chosen);
    std::string help;
    AddHelp(app, given, help);
    try {
        // The parser takes them from the back.
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    } catch (const CLI::ParseError& error) {
        return SayUsage(app, error, arguments);
    }
    std::optional<Library> library;
    try {
        if (!help.empty()) {
            WriteOutput(help);
            FlushOutput();
            return 0;
        }
        library.emplace(given.common.locale, given.common.privateCopy);
        library->options().faithful = given.common.faithful ? 1 : 0;
        if (!given.common.converter.empty() || !given.common.parameters.empty()) {
            library->UseConverter(given.common.converter, given.common.parameters);
        }
        const bool isGood = chosen(*library);
        FlushOutput();
        return isGood ? 0 : kFailed;
    } catch (const std::bad_alloc&) {
        throw;  // there may be no memory for any other message either
    } catch (const WrongUsage& error) {
        zentor::os::WriteError("zentor: " + Printable(error.what()) + "\n");
        return kWrongUsage;
    } catch (const LibraryFailure& failure) {
        if (library) {
            SayFailure(*library, given.common, failure.report(), given.document);
        } else {
            zentor::os::WriteError("zentor: " + Printable(failure.what()) + "\n");
        }
        return kFailed;
    } catch (const std::exception& failure) {
        zentor::os::WriteError("zentor: " + Printable(failure.what()) + "\n");
        return kFailed;
    }
}

}  // namespace

}  // namespace zentor_cli

int main(int argc, char** argv) {
    zentor::os::IgnoreBrokenPipes();
    zentor::os::WatchForStop();
    try {
        return zentor_cli::Run(zentor::os::Arguments(argc, argv));
    } catch (const zentor_cli::Stopped&) {
        zentor::os::EndByStop();
    } catch (const zentor_cli::OutputClosed&) {
        zentor::os::EndByBrokenPipe();
    } catch (const std::bad_alloc&) {
        std::fputs("zentor: out of memory\n", stderr);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "zentor: %s\n", failure.what());
    }
    return zentor_cli::kFailed;
}
