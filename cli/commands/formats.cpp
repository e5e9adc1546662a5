#include <cstdio>

#include "commands/commands.h"
#include "json_output.h"

namespace zentor_cli {

void RunFormats(Library& library, const CommonOptions& common) {
    const std::vector<Format> formats = library.Formats();
    if (!common.json) {
        for (const Format& format : formats) {
            std::printf("%-8s %s\n", format.extension.c_str(), format.displayName.c_str());
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
