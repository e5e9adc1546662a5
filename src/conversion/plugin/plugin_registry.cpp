#include "conversion/plugin/plugin_registry.h"

#include <algorithm>
#include <iterator>
#include <new>
#include <optional>
#include <tuple>

#include "conversion/format_table.h"
#include "conversion/plugin/search_path.h"
#include "conversion/plugin/services.h"
#include "errors/last_exception.h"
#include "errors/raise.h"
#include "files/file_io.h"
#include "util/environment.h"
#include "util/path_text.h"

namespace ZT_PLUGIN {

using namespace zentor;

namespace {

// The bytes of an input that signatures ask for.
class InputBytes {
public:
    explicit InputBytes(const std::string& path)
        : file_(File_IO::Open(path, true, Access::kRead)), length_(File_IO::Length(file_.get())) {}

    bool Has(const FormatSignature& signature) const {
        const std::size_t size = signature.bytes.size();
        if (signature.offset > length_ || size > length_ - signature.offset) return false;
        File_IO::Seek(file_.get(), static_cast<std::int64_t>(signature.offset), 0);
        std::string bytes(size, '\0');
        return File_IO::Read(file_.get(), bytes.data(), size) == size && bytes == signature.bytes;
    }
    bool HasAnyOf(const std::vector<FormatSignature>& signatures) const {
        return std::any_of(signatures.begin(), signatures.end(),
                           [this](const FormatSignature& signature) { return Has(signature); });
    }

private:
    FileCloser file_;
    std::uint64_t length_;
};

bool HasExtension(const ConverterManifest& manifest, const std::string& extension) {
    return std::find(manifest.extensions.begin(), manifest.extensions.end(), extension) != manifest.extensions.end();
}

void Load(const PluginConverter& converter) {
    try {
        std::string diagnosis;
        converter.module->Load(diagnosis);
    } catch (const ns_sensor::ZT_Exception& failure) {
        // What is raised next for a module that is not loaded says which one it is.
        if (failure.code() != kModuleLoadingFailed.code) throw;
    }
}

// Asks the module itself.
bool ModuleAccepts(const PluginConverter& converter, const std::string& inputPath) {
    Load(converter);
    const ZT_PluginEntryPoints& entryPoints = converter.module->EntryPoints();
    if (entryPoints.checkFileFormat == nullptr) return true;
    const CheckedConverterScope checked(converter.manifest.identifier);
    std::uint8_t accepted = 0;
    const ZT_ErrorRecord error = CallModule([&](ZT_ErrorRecord* record) {
        entryPoints.checkFileFormat(converter.module->Identifier().c_str(), inputPath.c_str(), &accepted, record);
    });
    if (error.code != 0) {
        Raise({error.code, kPluginCheckFileFormat, error.extra1, error.extra2}, converter.manifest.name,
              converter.manifest.identifier);
    }
    return accepted != 0;
}

}  // namespace

ZT_ConverterHandler::ZT_ConverterHandler(const std::vector<std::string>& folders, std::string locale)
    : locale_(std::move(locale)) {
    for (const std::string& folder : folders) folders_.push_back({folder, {}});
    Look();
}

std::shared_ptr<ZT_ConverterHandler> ZT_ConverterHandler::LookAgain() const {
    auto again = std::make_shared<ZT_ConverterHandler>(std::vector<std::string>(), locale_);
    for (const SearchedFolder& folder : folders_) again->folders_.push_back({folder.path, {}});
    std::copy_if(modules_.begin(), modules_.end(), std::back_inserter(again->modules_),
                 [](const FoundModule& module) { return !module.isUnread; });
    again->Look();
    return again;
}

void ZT_ConverterHandler::Look() {
    const LastExceptionScope lastException;
    ModuleFinder finder;
    for (std::size_t folder = 0; folder < folders_.size(); ++folder) LookInto(folder, finder);
    std::sort(modules_.begin(), modules_.end(), [](const FoundModule& a, const FoundModule& b) {
        return std::tie(a.folder, a.path) < std::tie(b.folder, b.path);
    });
}

void ZT_ConverterHandler::LookInto(std::size_t folder, ModuleFinder& finder) {
    auto& [path, problems] = folders_[folder];
    try {
        if (!os::IsAbsolutePath(path)) Raise(kConvertPath, Quoted(kSearchPathVariable) + ": not absolute");
    } catch (const ns_sensor::ZT_Exception& failure) {
        problems.push_back({path, failure});
        return;
    }
    for (const std::string& module : finder.Find(path, problems)) AddModule(module, folder);
    for (const FolderProblem& problem : problems) KeepUnseen(problem.failure);
}

void ZT_ConverterHandler::AddModule(const std::string& path, std::size_t folder) {
    const auto isKnown = [&](const FoundModule& module) { return module.path == path; };
    if (std::any_of(modules_.begin(), modules_.end(), isKnown)) return;
    FoundModule found;
    found.path = path;
    found.folder = folder;
    try {
        if (!ReadModule(found, locale_)) return;
    } catch (const ns_sensor::ZT_Exception& failure) {
        found.problemCode = failure.code();
        found.problem = failure.what();
        if (found.isUnread) KeepUnseen(failure);
    }
    modules_.push_back(std::move(found));
}

void ZT_ConverterHandler::KeepUnseen(const ns_sensor::ZT_Exception& failure) {
    hasSeenAll_ = false;
    unseen_.Keep(failure);
}

template <class Accepts>
const PluginConverter* ZT_ConverterHandler::Find(const std::string& inputPath, FirstFailure& failure,
                                                 Accepts&& accepts) const {
    for (const FoundModule& module : modules_) {
        for (const PluginConverter& converter : module.converters) {
            try {
                if (accepts(converter.manifest) && ModuleAccepts(converter, inputPath)) return &converter;
            } catch (const ns_sensor::ZT_Exception& raised) {
                failure.Keep(raised);
            }
        }
    }
    return nullptr;
}

const PluginConverter* ZT_ConverterHandler::FindForced(const std::string& inputPath, const std::string& extension,
                                                       FirstFailure& failure) const {
    std::optional<InputBytes> bytes;
    const auto accepts = [&](const ConverterManifest& manifest) {
        if (!manifest.isForced || (manifest.extensions.empty() && manifest.signatures.empty())) return false;
        if (!manifest.extensions.empty() && !HasExtension(manifest, extension)) return false;
        if (manifest.signatures.empty()) return true;
        if (!bytes) bytes.emplace(inputPath);
        return bytes->HasAnyOf(manifest.signatures);
    };
    return Find(inputPath, failure, accepts);
}

const PluginConverter* ZT_ConverterHandler::FindOther(const std::string& inputPath, const std::string& extension,
                                                      FirstFailure& failure) const {
    std::optional<InputBytes> bytes;
    const auto accepts = [&](const ConverterManifest& manifest) {
        if (manifest.isForced) return false;
        if (HasExtension(manifest, extension)) return true;
        if (manifest.signatures.empty()) return false;
        if (!bytes) bytes.emplace(inputPath);
        return bytes->HasAnyOf(manifest.signatures);
    };
    return Find(inputPath, failure, accepts);
}

const PluginConverter* ZT_ConverterHandler::FindCalled(std::string_view name) const {
    for (const FoundModule& module : modules_) {
        for (const PluginConverter& converter : module.converters) {
            if (!IsCalled(converter.manifest.identifier, name)) continue;
            Load(converter);
            return &converter;
        }
    }
    return nullptr;
}

void ZT_ConverterHandler::Unload() {
    FirstFailure failure;
    bool isOutOfMemory = false;
    for (const FoundModule& module : modules_) {
        if (module.converters.empty()) continue;
        try {
            module.converters.front().module->Unload();
        } catch (const ns_sensor::ZT_Exception& raised) {
            failure.Keep(raised);
        } catch (const std::bad_alloc&) {  // for the message of a failure
            isOutOfMemory = true;
        }
    }
    failure.RaiseIfAny();
    if (isOutOfMemory) throw std::bad_alloc();
}

}  // namespace ZT_PLUGIN
