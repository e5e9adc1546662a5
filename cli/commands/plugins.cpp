#include <algorithm>

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
    if (!converter.parameters.empty()) {
        text += "    parameters:";
        for (const std::string& parameter : converter.parameters) text += " " + Printable(parameter);
        text += '\n';
    }
    WriteOutput(text);
}

void ShowModule(const PluginModule& module) {
    std::string text = Printable(module.path) + " (" + Printable(module.identifier) + ")";
    if (module.problem.code != 0) text += ": " + Printable(module.problem.Text());
    if (module.loaded) {
        const auto& [report, diagnosis] = *module.loaded;
        text += report.code == 0 ? ": loaded" : ": " + Printable(report.Text());
        if (!diagnosis.empty()) text += "\n  " + Printable(diagnosis);
    }
    WriteOutput(text + '\n');
    for (const PluginConverter& converter : module.converters) ShowConverter(converter);
}

void ShowText(const Converters& converters) {
    for (const PluginFolder& folder : converters.pluginFolders) {
        WriteOutput(Printable(folder.path) + (folder.modules.empty() && folder.problems.empty() ? ": none\n" : ":\n"));
        for (const auto& [path, report] : folder.problems) {
            WriteOutput(Printable(path) + ": " + Printable(report.Text()) + '\n');
        }
        for (const PluginModule& module : folder.modules) ShowModule(module);
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
    json.Key("parameters");
    json.BeginArray();
    for (const std::string& parameter : converter.parameters) json.Value(parameter);
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

void AppendReport(JsonOutput& json, const Report& report) {
    json.Member("code", report.code);
    json.Member("message", report.message);
}

void AppendFolder(JsonOutput& json, const PluginFolder& folder) {
    json.BeginObject();
    json.Member("path", folder.path);
    json.Key("problems");
    json.BeginArray();
    for (const auto& [path, report] : folder.problems) {
        json.BeginObject();
        json.Member("path", path);
        AppendReport(json, report);
        json.EndObject();
    }
    json.EndArray();
    json.EndObject();
}

void AppendModule(JsonOutput& json, const PluginModule& module) {
    json.BeginObject();
    json.Member("path", module.path);
    json.Member("identifier", module.identifier);
    if (module.problem.code != 0) {
        json.Key("problem");
        json.BeginObject();
        AppendReport(json, module.problem);
        json.EndObject();
    }
    json.Key("converters");
    json.BeginArray();
    for (const PluginConverter& converter : module.converters) AppendConverter(json, converter);
    json.EndArray();
    if (module.loaded) {
        json.Key("load");
        json.BeginObject();
        AppendReport(json, module.loaded->report);
        json.Member("diagnosis", module.loaded->diagnosis);
        json.EndObject();
    }
    json.EndObject();
}

void ShowJson(const Converters& converters) {
    const std::vector<PluginFolder>& folders = converters.pluginFolders;
    JsonOutput json;
    json.BeginObject();
    json.Member("folder", folders.empty() ? std::string() : folders.back().path);
    json.Key("folders");
    json.BeginArray();
    for (const PluginFolder& folder : folders) AppendFolder(json, folder);
    json.EndArray();
    json.Key("modules");
    json.BeginArray();
    for (const PluginFolder& folder : folders) {
        for (const PluginModule& module : folder.modules) AppendModule(json, module);
    }
    json.EndArray();
    json.EndObject();
    json.Finish();
}

// Also false for a module that was not loaded because of what was found before.
bool CanBeUsed(const PluginModule& module) { return module.loaded && module.loaded->report.code == 0; }

}  // namespace

bool RunPlugins(Library& library, const CommonOptions& common, bool load) {
    const Converters converters = library.ListConverters(load);
    if (common.json) {
        ShowJson(converters);
    } else {
        ShowText(converters);
    }
    const auto areUsable = [](const PluginFolder& folder) {
        return std::all_of(folder.modules.begin(), folder.modules.end(), CanBeUsed);
    };
    return !load || std::all_of(converters.pluginFolders.begin(), converters.pluginFolders.end(), areUsable);
}

}  // namespace zentor_cli
