#include "commands/commands.h"
#include "json_output.h"
#include "standard_output.h"
#include "text_output.h"

namespace zentor_cli {

void RunFormats(Library& library, const CommonOptions& common) {
    const std::vector<Format> formats = library.ListConverters().formats;
    if (!common.json) {
        for (const Format& format : formats) {
            WriteOutput(Padded(Printable(format.extension), 8) + ' ' + Printable(format.displayName) + '\n');
        }
        return;
    }
    JsonOutput json;
    json.BeginArray();
    for (const Format& format : formats) {
        json.BeginObject();
        json.Member("extension", format.extension);
        json.Member("displayName", format.displayName);
        json.EndObject();
    }
    json.EndArray();
    json.Finish();
}

}  // namespace zentor_cli
