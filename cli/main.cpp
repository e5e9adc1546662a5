// zentor: the command. Exit status 0; 1 for a failure that the library reported; 2 for wrong usage.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <functional>

#include "commands/commands.h"
#include "util/console.h"

namespace zentor_cli {

namespace {

constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

using Command = std::function<void(Library&)>;

void AddCommands(CLI::App& app, CommonOptions& common, ConvertOptions& convert, Command& chosen) {
    app.add_flag("--json", common.json, "Print the result as JSON");
    app.add_flag("--quiet", common.quiet, "Show no progress and no summary");
    app.add_option("--locale", common.locale, "Language of messages, e.g. en_US");
    app.set_version_flag("--version", "zentor " ZENTOR_VERSION);
    app.require_subcommand(1);
    app.fallthrough();
    app.allow_windows_style_options(false);  // a path may begin with a slash everywhere

    CLI::App* formats = app.add_subcommand("formats", "List the formats that can be converted");
    formats->callback([&] { chosen = [&](Library& library) { RunFormats(library, common); }; });

    CLI::App* conversion = app.add_subcommand("convert", "Convert a recording into a vkjson document");
    conversion->add_option("INPUT", convert.input, "The recording")->required();
    conversion->add_option("-o,--output", convert.output,
                           "The document, or - for standard output (default: INPUT's name with .vkjson, here)");
    conversion->add_flag("--force", convert.force, "Replace the document if it exists");
    conversion->add_flag("--no-validate", convert.noValidate, "Do not read the document back (this version cannot)")
        ->required();
    conversion->callback([&] { chosen = [&](Library& library) { RunConvert(library, common, convert); }; });
}

int Run(std::vector<std::string> arguments) {
    CLI::App app("Turns sensor and motion recordings into vkjson documents.", "zentor");
    CommonOptions common;
    ConvertOptions convert;
    Command chosen;
    AddCommands(app, common, convert, chosen);
    try {
        std::reverse(arguments.begin(), arguments.end());  // the parser takes them from the back
        app.parse(std::move(arguments));
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : kWrongUsage;
    }
    try {
        Library library(common.locale);
        chosen(library);
        if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return 0;
        throw LibraryFailure("standard output cannot be written");
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "zentor: %s\n", failure.what());
        return kFailed;
    }
}

}  // namespace

}  // namespace zentor_cli

int main(int argc, char** argv) {
    zentor::os::IgnoreBrokenPipes();
    return zentor_cli::Run(zentor::os::Arguments(argc, argv));
}
