#include "conversion/plugin/plugin_registry.h"

#include <algorithm>
#include <exception>
#include <optional>

#include "conversion/input_checks.h"
#include "errors/exception.h"
#include "errors/last_exception.h"
#include "errors/raise.h"
#include "util/file_io.h"

namespace ZT_PLUGIN {

using namespace zentor;

namespace {

constexpr int kDeepestFolder = 8;  // links can lead in circles

class FolderCloser {
public:
    explicit FolderCloser(os::Folder* folder) : folder_(folder) {}
    ~FolderCloser() { os::CloseFolder(folder_); }
    FolderCloser(const FolderCloser&) = delete;
    FolderCloser& operator=(const FolderCloser&) = delete;

private:
    os::Folder* folder_;
};

// Adds the files in a folder whose names are those of modules. Names that begin with a dot are nobody's plug-ins.
void CollectModules(const std::string& folder, int depth, std::vector<std::string>& paths) {
    os::Folder* const open = File_IO::OpenFolder(folder);
    const FolderCloser closer(open);
    const char separator = std::string_view(os::kPathSeparators).back();
    std::string name;
    PathKind kind = PathKind::kNone;
    while (File_IO::ReadFolder(open, name, kind)) {
        if (name.starts_with('.')) continue;
        std::string path = folder;
        path += separator;
        path += name;
        if (kind == PathKind::kFile && LowerCaseAscii(name).ends_with(os::kModuleSuffix)) paths.push_back(path);
        if (kind != PathKind::kFolder || depth == kDeepestFolder) continue;
        try {
            CollectModules(path, depth + 1, paths);
        } catch (const ns_sensor::ZT_Exception&) {
            // The modules elsewhere are there all the same.
        }
    }
}

std::vector<std::string> ModulePaths(const std::string& folder) {
    std::vector<std::string> paths;
    if (File_IO::GetFileMode(folder) == PathKind::kFolder) CollectModules(folder, 0, paths);
    std::sort(paths.begin(), paths.end());
    return paths;
}

// Nothing when the file is no plug-in module at all.
std::optional<FoundModule> ReadModule(const std::string& path, const std::string& locale) {
    FoundModule found;
    found.path = path;
    std::string manifest;
    const os::Status hasManifest = os::ReadModuleText(path, "ZTPLUGINUIDS", manifest);
    const os::Status hasIdentifier = os::ReadModuleText(path, "MODULE_IDENTIFIER", found.identifier);
    if (hasManifest == os::Status::kNotFound || hasIdentifier == os::Status::kNotFound) return std::nullopt;
    try {
        if (hasManifest != os::Status::kOk || hasIdentifier != os::Status::kOk) Raise(kModuleLoadingFailed);
        const auto module = std::make_shared<ZT_Module>(path, found.identifier);
        for (ConverterManifest& converter : ReadManifest(manifest, locale)) {
            found.converters.push_back({module, std::move(converter)});
        }
    } catch (const ns_sensor::ZT_Exception& failure) {
        found.problemCode = failure.code();
        found.problem = failure.what();
    }
    return found;
}

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

// Asks the module itself.
bool ModuleAccepts(const PluginConverter& converter, const std::string& inputPath) {
    converter.module->Load();
    const ZT_PluginEntryPoints& entryPoints = converter.module->EntryPoints();
    if (entryPoints.checkFileFormat == nullptr) return true;
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

ZT_ConverterHandler::ZT_ConverterHandler(std::string folder, const std::string& locale) : folder_(std::move(folder)) {
    const auto lastException = GetLastException();
    try {
        for (const std::string& path : ModulePaths(folder_)) {
            if (auto found = ReadModule(path, locale)) modules_.push_back(std::move(*found));
        }
    } catch (const ns_sensor::ZT_Exception&) {
        // A folder that cannot be read holds no plug-ins; the built-in converters work without.
    }
    RestoreLastException(lastException);
}

template <class Accepts>
const PluginConverter* ZT_ConverterHandler::Find(const std::string& inputPath, Accepts&& accepts) {
    const auto lastException = GetLastException();
    std::exception_ptr failure;
    for (const FoundModule& module : modules_) {
        for (const PluginConverter& converter : module.converters) {
            if (!accepts(converter.manifest)) continue;
            try {
                if (!ModuleAccepts(converter, inputPath)) continue;
                RestoreLastException(lastException);
                return &converter;
            } catch (const ns_sensor::ZT_Exception&) {
                if (!failure) failure = std::current_exception();
            }
        }
    }
    if (failure) std::rethrow_exception(failure);
    return nullptr;
}

const PluginConverter* ZT_ConverterHandler::FindForced(const std::string& inputPath, const std::string& extension) {
    std::optional<InputBytes> bytes;
    const auto accepts = [&](const ConverterManifest& manifest) {
        if (!manifest.isForced || (manifest.extensions.empty() && manifest.signatures.empty())) return false;
        if (!manifest.extensions.empty() && !HasExtension(manifest, extension)) return false;
        if (manifest.signatures.empty()) return true;
        if (!bytes) bytes.emplace(inputPath);
        return bytes->HasAnyOf(manifest.signatures);
    };
    return Find(inputPath, accepts);
}

const PluginConverter* ZT_ConverterHandler::FindOther(const std::string& inputPath, const std::string& extension) {
    std::optional<InputBytes> bytes;
    const auto accepts = [&](const ConverterManifest& manifest) {
        if (manifest.isForced) return false;
        if (HasExtension(manifest, extension)) return true;
        if (manifest.signatures.empty()) return false;
        if (!bytes) bytes.emplace(inputPath);
        return bytes->HasAnyOf(manifest.signatures);
    };
    return Find(inputPath, accepts);
}

void ZT_ConverterHandler::Unload() {
    std::exception_ptr failure;
    for (const FoundModule& module : modules_) {
        if (module.converters.empty()) continue;
        try {
            module.converters.front().module->Unload();
        } catch (const ns_sensor::ZT_Exception&) {
            if (!failure) failure = std::current_exception();
        }
    }
    if (failure) std::rethrow_exception(failure);
}

}  // namespace ZT_PLUGIN
