#include "util/module_texts.h"

#include <dlfcn.h>
#include <elf.h>

#include <algorithm>
#include <bit>
#include <concepts>
#include <cstring>

#include "util/os_file.h"

namespace zentor::os {

namespace {

constexpr std::uint64_t kLongestText = 16 << 20;
constexpr std::string_view kSectionPrefix = ".zt.txt.";

// A file from which parts are read. Nothing of what it says about itself is trusted.
class ModuleFile {
public:
    explicit ModuleFile(const std::string& path) {
        if (OpenFile(path, true, Access::kRead, file_) != Status::kOk) file_ = kNoFile;
        isReadable_ = file_ != kNoFile && GetFileLength(file_, length_) == Status::kOk;
    }
    ~ModuleFile() {
        if (file_ != kNoFile) CloseFile(file_);
    }
    ModuleFile(const ModuleFile&) = delete;
    ModuleFile& operator=(const ModuleFile&) = delete;

    // False when it cannot be opened, and as soon as the system has failed to read a part that is there.
    bool IsReadable() const { return isReadable_; }

    // False also for a part that is not in the file.
    bool Read(std::uint64_t offset, void* buffer, std::size_t count) {
        if (!isReadable_ || offset > length_ || count > length_ - offset) return false;
        std::uint64_t position = 0;
        isReadable_ = SeekFile(file_, static_cast<std::int64_t>(offset), SeekMode::kStart, position) == Status::kOk;
        auto* at = static_cast<char*>(buffer);
        while (isReadable_ && count != 0) {
            std::size_t done = 0;
            isReadable_ = ReadFromFile(file_, at, count, done) == Status::kOk && done != 0;
            at += done;
            count -= done;
        }
        return isReadable_;
    }

private:
    FileHandle file_ = kNoFile;
    std::uint64_t length_ = 0;
    bool isReadable_ = false;
};

// The kind of machine that a module was built for.
struct Machine {
    unsigned char bits = 0;       // ELFCLASS32, ELFCLASS64
    unsigned char byteOrder = 0;  // ELFDATA2LSB, ELFDATA2MSB
    std::uint16_t number = 0;     // EM_...

    bool operator==(const Machine&) const = default;
};

// That of this library, whose file begins where it is in memory.
Machine OwnMachine() {
    Dl_info info;
    if (dladdr(reinterpret_cast<const void*>(&OwnMachine), &info) == 0) return {};
    const auto* const header = static_cast<const Elf64_Ehdr*>(info.dli_fbase);
    return {header->e_ident[EI_CLASS], header->e_ident[EI_DATA], header->e_machine};
}

template <std::unsigned_integral Number>
Number Swapped(Number number) {
    if constexpr (sizeof number == 2) return __builtin_bswap16(number);
    if constexpr (sizeof number == 4) return __builtin_bswap32(number);
    if constexpr (sizeof number == 8) return __builtin_bswap64(number);
}

// The sections of a module with numbers of 32 or 64 bits, in its own byte order.
template <class Header, class Section>
class SectionTable {
public:
    SectionTable(ModuleFile& file, bool isSwapped) : file_(file), isSwapped_(isSwapped) {
        Header header;
        if (!file.Read(0, &header, sizeof header)) return;
        machine_ = Number(header.e_machine);
        if (Number(header.e_type) != ET_DYN || Number(header.e_shentsize) != sizeof(Section)) return;
        sections_.resize(Number(header.e_shnum));
        names_ = Number(header.e_shstrndx);
        const std::size_t size = sections_.size() * sizeof(Section);
        if (names_ >= sections_.size() || !file.Read(Number(header.e_shoff), sections_.data(), size)) sections_.clear();
    }

    std::uint16_t MachineNumber() const { return machine_; }

    ModuleContent ReadText(const std::string& name, std::string& text) const {
        const Section* const section = Find(std::string(kSectionPrefix) + name);
        if (section == nullptr || Number(section->sh_type) == SHT_NOBITS) return ModuleContent::kNone;
        const std::uint64_t size = Number(section->sh_size);
        if (size > kLongestText) return ModuleContent::kDamaged;
        text.resize(size);
        return file_.Read(Number(section->sh_offset), text.data(), text.size()) ? ModuleContent::kTexts
                                                                                : ModuleContent::kDamaged;
    }

private:
    template <std::unsigned_integral Value>
    Value Number(Value value) const {
        return isSwapped_ ? Swapped(value) : value;
    }

    const Section* Find(const std::string& name) const {
        if (sections_.empty()) return nullptr;
        const Section& names = sections_[names_];
        const std::uint64_t namesSize = Number(names.sh_size);
        std::string candidate(name.size() + 1, '\1');  // with the zero that ends a name
        for (const Section& section : sections_) {
            const std::uint64_t at = Number(section.sh_name);
            if (at >= namesSize || candidate.size() > namesSize - at) continue;
            if (!file_.Read(Number(names.sh_offset) + at, candidate.data(), candidate.size())) continue;
            if (candidate.back() == '\0' && candidate.compare(0, name.size(), name) == 0) return &section;
        }
        return nullptr;
    }

    ModuleFile& file_;
    bool isSwapped_;
    std::uint16_t machine_ = 0;
    std::size_t names_ = 0;
    std::vector<Section> sections_;
};

template <class Header, class Section>
ModuleContent ReadTexts(ModuleFile& file, const std::vector<std::string>& names, Machine& machine,
                        std::vector<std::string>& texts) {
    const bool isBigEndian = machine.byteOrder == ELFDATA2MSB;
    const SectionTable<Header, Section> sections(file, isBigEndian != (std::endian::native == std::endian::big));
    machine.number = sections.MachineNumber();
    ModuleContent content = ModuleContent::kTexts;
    for (const std::string& name : names) {
        content = std::max(content, sections.ReadText(name, texts.emplace_back()));
    }
    return content;
}

// Also what the file is built for, if it is a module at all.
ModuleContent ReadElf(const std::string& path, const std::vector<std::string>& names, Machine& machine,
                      std::vector<std::string>& texts) {
    ModuleFile file(path);
    unsigned char identification[EI_NIDENT] = {};
    ModuleContent content = ModuleContent::kNone;
    if (file.Read(0, identification, sizeof identification) && std::memcmp(identification, ELFMAG, SELFMAG) == 0) {
        machine.bits = identification[EI_CLASS];
        machine.byteOrder = identification[EI_DATA];
        if (machine.bits == ELFCLASS64) content = ReadTexts<Elf64_Ehdr, Elf64_Shdr>(file, names, machine, texts);
        if (machine.bits == ELFCLASS32) content = ReadTexts<Elf32_Ehdr, Elf32_Shdr>(file, names, machine, texts);
    }
    return file.IsReadable() ? content : ModuleContent::kUnreadable;
}

}  // namespace

ModuleContent ReadModuleTexts(const std::string& path, const std::vector<std::string>& names, ModuleTexts& found) {
    found = {};
    Machine machine;
    const ModuleContent content = ReadElf(path, names, machine, found.texts);
    found.isForThisMachine = machine == OwnMachine();
    return content;
}

}  // namespace zentor::os
