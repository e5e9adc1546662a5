#include "commands/commands.h"
#include "json_output.h"
#include "standard_output.h"
#include "text_output.h"

namespace zentor_cli {

namespace {

// What is wrong with a document; code 0 for nothing.
Report Validate(Library& library, const CommonOptions& common, const std::string& path) {
    try {
        OpenShowingProgress(library, common, path);
        return {};
    } catch (const LibraryFailure& failure) {
        return failure.report();
    }
}

void WriteResult(JsonOutput& json, const std::string& path, const Report& report) {
    json.BeginObject();
    json.Member("document", path);
    json.Member("ok", report.code == 0);
    if (report.code != 0) {
        json.Member("code", report.code);
        json.Member("message", report.message);
        if (report.offset >= 0) json.Member("offset", report.offset);
    }
    json.EndObject();
}

}  // namespace

bool RunValidate(Library& library, const CommonOptions& common, const std::vector<std::string>& paths) {
    library.options().checkSamples = 1;
    bool allGood = true;
    JsonOutput json;
    if (common.json) json.BeginArray();
    for (const std::string& path : paths) {
        const Report report = Validate(library, common, path);
        allGood = allGood && report.code == 0;
        if (common.json) {
            WriteResult(json, path, report);
        } else {
            const std::string result = report.code == 0 ? "ok" : report.Text();
            WriteOutput(Printable(path) + ": " + Printable(result) + '\n');
        }
    }
    if (common.json) {
        json.EndArray();
        json.Finish();
    }
    return allGood;
}

}  // namespace zentor_cli
