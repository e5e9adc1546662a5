#include <cstdio>

#include "commands/commands.h"
#include "json_output.h"
#include "text_output.h"

namespace zentor_cli {

void RunFormats(Library& library, const CommonOptions& common) {
    const std::vector<Format> formats = library.ListConverters().formats;
    if (!common.json) {
        for (const Format& format : formats) {
            std::printf("%-8s %s\n", Printable(format.extension).c_str(), Printable(format.displayName).c_str());
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
