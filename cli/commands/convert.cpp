#include "commands/commands.h"
#include "json_output.h"
#include "output_file.h"
#include "progress.h"
#include "standard_output.h"
#include "text_check.h"
#include "text_output.h"

namespace zentor_cli {

namespace {

void SayResult(const CommonOptions& common, const std::string& input, const std::string& output, std::uint32_t bytes) {
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
    std::uint32_t bytes = 0;
    {
        const Progress progress("converting " + options.input, common.quiet);
        Stream stream(library, options.input, !options.noValidate);
        if (!options.noValidate) CheckTexts(stream, options.input);
        bytes = stream->Size();
        if (toStandardOutput) {
            WriteToStandardOutput(library, stream);
        } else {
            SaveWhole(library, stream, options.input, output, options.force);
        }
    }
    if (!toStandardOutput) SayResult(common, options.input, output, bytes);
}

}  // namespace zentor_cli
