#include "entry/format_list.h"

#include <map>
#include <string>

#include "conversion/format_table.h"
#include "conversion/plugin/plugin_host.h"
#include "errors/host_tables.h"
#include "errors/last_exception.h"
#include "util/utf_codec.h"

namespace zentor {

namespace {

void ListConverter(const ZT_PluginCallbacks& callbacks, const ConverterManifest& converter, void* listContext) {
    CallHost(callbacks.addConverter, listContext, converter.identifier.c_str(), converter.name.c_str(),
             converter.version, static_cast<std::uint8_t>(converter.isForced));
    for (const std::string& extension : converter.extensions) {
        CallHost(callbacks.addExtension, listContext, extension.c_str());
    }
    for (const std::string& parameter : converter.parameters) {
        CallHost(callbacks.addParameter, listContext, parameter.c_str());
    }
    for (const FormatSignature& signature : converter.signatures) {
        CallHost(callbacks.addSignature, listContext, signature.offset, signature.bytes.data(), signature.bytes.size());
    }
}

void ListFolder(const ZT_PluginCallbacks& callbacks, const ZT_PLUGIN::SearchedFolder& folder, void* listContext) {
    CallHost(callbacks.setFolder, listContext, folder.path.c_str());
    for (const auto& [path, failure] : folder.problems) {
        CallHost(callbacks.addFolderProblem, listContext, path.c_str(), failure.code(), failure.what());
    }
}

void ListModule(const ZT_PluginCallbacks& callbacks, const ZT_PLUGIN::FoundModule& module, void* listContext) {
    CallHost(callbacks.addModule, listContext, module.path.c_str(), module.identifier.c_str(), module.problemCode,
             module.problem.c_str());
    for (const ZT_PLUGIN::PluginConverter& converter : module.converters) {
        ListConverter(callbacks, converter.manifest, listContext);
    }
    if (callbacks.setLoadResult == nullptr || module.converters.empty()) return;
    std::uint32_t code = 0;
    std::string message;
    std::string diagnosis;
    {
        const LastExceptionScope lastException;  // the listing itself has not failed
        try {
            module.converters.front().module->Load(diagnosis);
        } catch (const ns_sensor::ZT_Exception& failure) {
            code = failure.code();
            message = failure.what();
        }
    }
    diagnosis = Utf16ToUtf8(Utf8ToUtf16(diagnosis));  // the system's words need not be valid text
    CallHost(callbacks.setLoadResult, listContext, code, message.c_str(), diagnosis.c_str());
}

}  // namespace

void ListFormats(const ZT_HostSuite& host, void* listContext) {
    if (host.addFormat == nullptr) return;
    std::map<std::string, std::string> formats;
    for (const NativeFormat& format : NativeFormats()) formats.emplace(format.extension, format.displayName);
    const auto plugins = Plugins();
    for (const ZT_PLUGIN::FoundModule& module : plugins->Modules()) {
        for (const ZT_PLUGIN::PluginConverter& converter : module.converters) {
            for (const std::string& extension : converter.manifest.extensions) {
                formats.emplace(extension, converter.manifest.name);
            }
        }
    }
    for (const auto& [extension, name] : formats)
        CallHost(host.addFormat, listContext, extension.c_str(), name.c_str());
}

void ListPlugins(void* listContext) {
    const ZT_PluginCallbacks* const wanted = ReadHostExtensions().plugins;
    if (wanted == nullptr) return;
    const ZT_PluginCallbacks callbacks = ReadHostTable(wanted);
    const auto plugins = Plugins();
    auto module = plugins->Modules().begin();
    for (std::size_t folder = 0; folder < plugins->Folders().size(); ++folder) {
        ListFolder(callbacks, plugins->Folders()[folder], listContext);
        for (; module != plugins->Modules().end() && module->folder == folder; ++module) {
            ListModule(callbacks, *module, listContext);
        }
    }
}

}  // namespace zentor
