#include "reader/name_index.h"

#include <bit>
#include <limits>

#include "errors/raise.h"

namespace zentor {

NameTable::NameTable(std::uint64_t count) {
    if (count >= std::numeric_limits<std::uint32_t>::max()) Raise(kMemoryNotAvailable);
    slots_.resize(std::bit_ceil(count + count / 2 + 1));
}

void NameTable::Add(std::uint64_t hash, std::uint32_t child) {
    std::size_t at = SlotOf(hash);
    while (slots_[at] != 0) at = (at + 1) & (slots_.size() - 1);
    slots_[at] = TagOf(hash) << 32 | (std::uint64_t{child} + 1);
}

std::shared_ptr<const NameTable> NameIndex::TableOf(NodeNumber group,
                                                    const std::function<std::shared_ptr<const NameTable>()>& make) {
    const std::lock_guard lock(mutex_);
    std::shared_ptr<const NameTable>& table = tables_[group];
    if (table == nullptr) table = make();
    return table;
}

}  // namespace zentor
