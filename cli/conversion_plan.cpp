#include "conversion_plan.h"

#include <map>

#include "output_file.h"
#include "util/os_file.h"
#include "wrong_usage.h"

namespace zentor_cli {

namespace os = zentor::os;

namespace {

bool IsFolder(const std::string& path) {
    os::PathKind kind = os::PathKind::kNone;
    os::GetPathKind(path, kind);
    return kind == os::PathKind::kFolder;
}

std::string PathIn(std::string folder, const std::string& name) {
    const std::string separators = os::kPathSeparators;
    if (separators.find(folder.back()) == std::string::npos) folder += separators.back();
    return folder + name;
}

std::string OutputOf(const std::string& input, const ConvertOptions& options) {
    const std::string& output = options.output;
    if (output.empty()) return DefaultOutputName(input);
    return output != "-" && IsFolder(output) ? PathIn(output, DefaultOutputName(input)) : output;
}

// Names that file systems may take for the same.
std::string Folded(std::string path) {
    for (char& c : path) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    return path;
}

}  // namespace

std::vector<PlannedConversion> PlanConversions(const ConvertOptions& options) {
    const bool isSeveral = options.inputs.size() > 1;
    if (isSeveral && !options.output.empty() && !IsFolder(options.output)) {
        throw WrongUsage("several inputs need a folder that is there as output, not " + options.output);
    }
    std::vector<PlannedConversion> plan;
    std::map<std::string, std::string> inputOf;
    for (const std::string& input : options.inputs) {
        if (input == "-") {
            if (isSeveral) throw WrongUsage("standard input cannot be one of several inputs");
            if (options.format.empty()) throw WrongUsage("standard input needs --format, such as --format csv");
            if (options.output.empty() || (options.output != "-" && IsFolder(options.output))) {
                throw WrongUsage("standard input has no name: it needs --output with a file, or -");
            }
        } else if (!options.format.empty()) {
            throw WrongUsage("--format is for standard input");
        }
        plan.push_back({input, OutputOf(input, options)});
        const auto [other, isNew] = inputOf.emplace(Folded(plan.back().output), input);
        if (!isNew) {
            throw WrongUsage(other->second + " and " + input + " would both become " + plan.back().output);
        }
    }
    return plan;
}

}  // namespace zentor_cli
