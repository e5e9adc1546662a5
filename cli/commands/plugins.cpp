#include <cstdio>

#include "commands/commands.h"
#include "json_output.h"
#include "text_output.h"

namespace zentor_cli {

namespace {

void ShowConverter(const PluginConverter& converter) {
    std::printf("  %s: %s, version %g%s\n", Printable(converter.identifier).c_str(), Printable(converter.name).c_str(),
                converter.version, converter.isForced ? ", before built-in formats" : "");
    if (!converter.extensions.empty()) {
        std::string list;
        for (const std::string& extension : converter.extensions) list += " " + extension;
        std::printf("    extensions:%s\n", Printable(list).c_str());
    }
    for (const PluginConverter::Signature& signature : converter.signatures) {
        std::printf("    at byte %llu: \"%s\"\n", static_cast<unsigned long long>(signature.offset),
                    Printable(signature.bytes).c_str());
    }
}

void ShowText(const Converters& converters) {
    std::printf("%s:%s\n", Printable(converters.pluginFolder).c_str(), converters.plugins.empty() ? " none" : "");
    for (const PluginModule& module : converters.plugins) {
        std::printf("%s (%s)%s%s\n", Printable(module.path).c_str(), Printable(module.identifier).c_str(),
                    module.problem.code == 0 ? "" : ": ",
                    module.problem.code == 0 ? "" : Printable(module.problem.Text()).c_str());
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
