#include "util/module.h"

#include <dlfcn.h>
#include <elf.h>

#include <cstring>
#include <vector>

namespace zentor::os {

const char* const kModuleSuffix = ".so";

namespace {

constexpr std::uint64_t kLongestText = 16 << 20;
constexpr std::string_view kSectionPrefix = ".zt.txt.";

// A file from which parts are read. Nothing of what it says about itself is trusted.
class ModuleFile {
public:
    explicit ModuleFile(const std::string& path) {
        if (OpenFile(path, true, Access::kRead, file_) != Status::kOk) file_ = kNoFile;
        if (file_ != kNoFile && GetFileLength(file_, length_) != Status::kOk) length_ = 0;
    }
    ~ModuleFile() {
        if (file_ != kNoFile) CloseFile(file_);
    }
    ModuleFile(const ModuleFile&) = delete;
    ModuleFile& operator=(const ModuleFile&) = delete;

    bool IsOpen() const { return file_ != kNoFile; }

    bool Read(std::uint64_t offset, void* buffer, std::size_t count) const {
        std::uint64_t position = 0;
        if (offset > length_ || count > length_ - offset) return false;
        if (SeekFile(file_, static_cast<std::int64_t>(offset), SeekMode::kStart, position) != Status::kOk) return false;
        auto* at = static_cast<char*>(buffer);
        while (count != 0) {
            std::size_t done = 0;
            if (ReadFromFile(file_, at, count, done) != Status::kOk || done == 0) return false;
            at += done;
            count -= done;
        }
        return true;
    }

private:
    FileHandle file_ = kNoFile;
    std::uint64_t length_ = 0;
};

bool IsModuleOfThisMachine(const Elf64_Ehdr& header, const Elf64_Ehdr& own) {
    return std::memcmp(header.e_ident, ELFMAG, SELFMAG) == 0 && header.e_ident[EI_CLASS] == ELFCLASS64 &&
           header.e_ident[EI_DATA] == own.e_ident[EI_DATA] && header.e_type == ET_DYN &&
           header.e_machine == own.e_machine && header.e_shentsize == sizeof(Elf64_Shdr);
}

bool ReadHeader(const std::string& path, Elf64_Ehdr& header) {
    return ModuleFile(path).Read(0, &header, sizeof header);
}

// The section with a name, among those of the table that `header` gives; false when there is none.
bool FindSection(const ModuleFile& file, const Elf64_Ehdr& header, const std::string& name, Elf64_Shdr& found) {
    std::vector<Elf64_Shdr> sections(header.e_shnum);
    if (sections.empty() || header.e_shstrndx >= sections.size()) return false;
    if (!file.Read(header.e_shoff, sections.data(), sections.size() * sizeof(Elf64_Shdr))) return false;
    const Elf64_Shdr& names = sections[header.e_shstrndx];
    std::string candidate(name.size() + 1, '\1');  // with the zero that ends a name
    for (const Elf64_Shdr& section : sections) {
        if (section.sh_name >= names.sh_size || candidate.size() > names.sh_size - section.sh_name) continue;
        if (!file.Read(names.sh_offset + section.sh_name, candidate.data(), candidate.size())) continue;
        if (candidate.back() != '\0' || candidate.compare(0, name.size(), name) != 0) continue;
        found = section;
        return true;
    }
    return false;
}

}  // namespace

Status ReadModuleText(const std::string& path, const std::string& name, std::string& text) {
    const ModuleFile file(path);
    if (!file.IsOpen()) return Status::kFailed;
    std::string ownPath;
    Elf64_Ehdr own;
    Elf64_Ehdr header;
    Elf64_Shdr section;
    if (OwnModulePath(ownPath) != Status::kOk || !ReadHeader(ownPath, own)) return Status::kFailed;
    if (!file.Read(0, &header, sizeof header)) return Status::kNotFound;
    // An executable is no module, but may hold the library itself.
    own.e_type = ET_DYN;
    if (!IsModuleOfThisMachine(header, own)) return Status::kNotFound;
    if (!FindSection(file, header, std::string(kSectionPrefix) + name, section) || section.sh_type == SHT_NOBITS) {
        return Status::kNotFound;
    }
    if (section.sh_size > kLongestText) return Status::kFailed;
    text.resize(section.sh_size);
    return file.Read(section.sh_offset, text.data(), text.size()) ? Status::kOk : Status::kFailed;
}

Module* LoadModule(const std::string& path) {
    return static_cast<Module*>(dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL));
}

void* FindFunction(Module* module, const char* name) { return dlsym(module, name); }

void UnloadModule(Module* module) { dlclose(module); }

Status OwnModulePath(std::string& path) {
    Dl_info info;
    if (dladdr(reinterpret_cast<const void*>(&OwnModulePath), &info) == 0 || info.dli_fname == nullptr) {
        return Status::kFailed;
    }
    std::string absolute;
    const Status status = AbsolutePath(info.dli_fname, absolute);
    return status == Status::kOk ? ResolveLinks(absolute, path) : status;
}

}  // namespace zentor::os
