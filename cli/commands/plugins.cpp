#include "commands/commands.h"
#include "json_output.h"
#include "standard_output.h"
#include "text_output.h"

namespace zentor_cli {

namespace {

void ShowConverter(const PluginConverter& converter) {
    std::string text = "  " + Printable(converter.identifier) + ": " + Printable(converter.name) + ", version " +
                       NumberText(converter.version) + (converter.isForced ? ", before built-in formats\n" : "\n");
    if (!converter.extensions.empty()) {
        text += "    extensions:";
        for (const std::string& extension : converter.extensions) text += " " + Printable(extension);
        text += '\n';
    }
    for (const PluginConverter::Signature& signature : converter.signatures) {
        text += "    at byte " + std::to_string(signature.offset) + ": \"" + Printable(signature.bytes) + "\"\n";
    }
    WriteOutput(text);
}

void ShowText(const Converters& converters) {
    WriteOutput(Printable(converters.pluginFolder) + (converters.plugins.empty() ? ": none\n" : ":\n"));
    for (const PluginModule& module : converters.plugins) {
        const std::string problem = module.problem.code == 0 ? "" : ": " + Printable(module.problem.Text());
        WriteOutput(Printable(module.path) + " (" + Printable(module.identifier) + ")" + problem + '\n');
        for (const PluginConverter& converter : module.converters) ShowConverter(converter);
    }
}

void AppendConverter(JsonOutput& json, const PluginConverter& converter) {
    json.BeginObject();
    json.Member("identifier", converter.identifier);
    json.Member("name", converter.name);
    json.Member("version", converter.version);
    json.Member("force", converter.isForced);
    json.Key("extensions");
    json.BeginArray();
    for (const std::string& extension : converter.extensions) json.Value(extension);
    json.EndArray();
    json.Key("signatures");
    json.BeginArray();
    for (const PluginConverter::Signature& signature : converter.signatures) {
        json.BeginObject();
        json.Member("offset", signature.offset);
        json.Member("bytes", signature.bytes);
        json.EndObject();
    }
    json.EndArray();
    json.EndObject();
}

void ShowJson(const Converters& converters) {
    JsonOutput json;
    json.BeginObject();
    json.Member("folder", converters.pluginFolder);
    json.Key("modules");
    json.BeginArray();
    for (const PluginModule& module : converters.plugins) {
        json.BeginObject();
        json.Member("path", module.path);
        json.Member("identifier", module.identifier);
        if (module.problem.code != 0) {
            json.Key("problem");
            json.BeginObject();
            json.Member("code", module.problem.code);
            json.Member("message", module.problem.message);
            json.EndObject();
        }
        json.Key("converters");
        json.BeginArray();
        for (const PluginConverter& converter : module.converters) AppendConverter(json, converter);
        json.EndArray();
        json.EndObject();
    }
    json.EndArray();
    json.EndObject();
    json.Finish();
}

}  // namespace

void RunPlugins(Library& library, const CommonOptions& common) {
    const Converters converters = library.ListConverters();
    if (common.json) {
        ShowJson(converters);
    } else {
        ShowText(converters);
    }
}

}  // namespace zentor_cli
