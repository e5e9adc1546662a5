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
    rapidjson::StringBuffer json;
    JsonWriter writer(json);
    writer.StartArray();
    for (const Format& format : formats) {
        writer.StartObject();
        WriteMember(writer, "extension", format.extension);
        WriteMember(writer, "displayName", format.displayName);
        writer.EndObject();
    }
    writer.EndArray();
    PrintLine(json);
}

}  // namespace zentor_cli
