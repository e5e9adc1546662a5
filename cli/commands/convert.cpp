#include "commands/commands.h"
#include "json_output.h"
#include "output_file.h"
#include "progress.h"
#include "standard_output.h"
#include "text_output.h"

namespace zentor_cli {

namespace {

void SayResult(const CommonOptions& common, const std::string& input, const std::string& output, std::uint64_t bytes) {
    if (common.json) {
        JsonOutput json;
        json.BeginObject();
        json.Member("input", input);
        json.Member("output", output);
        json.Member("bytes", bytes);
        json.EndObject();
        json.Finish();
    } else if (!common.quiet) {
        WriteOutput(Printable(output) + " (" + std::to_string(bytes) + " bytes)\n");
    }
}

}  // namespace

void RunConvert(Library& library, const CommonOptions& common, const ConvertOptions& options) {
    const bool toStandardOutput = options.output == "-";
    const std::string output = options.output.empty() ? DefaultOutputName(options.input) : options.output;
    if (!toStandardOutput) CheckOutputPath(library, output, options.force);
    std::uint64_t bytes = 0;
    {
        const Progress progress("converting " + options.input, common.quiet);
        library.options().strict = options.noValidate ? 0 : 1;
        library.options().unread = options.noValidate ? 1 : 0;
        if (toStandardOutput) {
            Stream stream(library, options.input, !options.noValidate);
            WriteToStandardOutput(library, stream);
        } else {
            bytes = SaveDocument(library, options.input, output, options.force);
        }
    }
    if (!toStandardOutput) SayResult(common, options.input, output, bytes);
}

}  // namespace zentor_cli
