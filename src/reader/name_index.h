// The children of groups by their match names, for those groups that have been asked for a child by name.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "reader/outline_index.h"
#include "util/keyed_hash.h"

namespace zentor {

// Where in a group a name may be: the hash of each child's name, and nothing of its text.
class NameTable {
public:
    explicit NameTable(std::uint64_t count);

    void Add(std::uint64_t hash, std::uint32_t child);
    // Calls `isIt` with children whose names may have this hash, until it is true for one; false without one.
    template <class IsIt>
    bool Find(std::uint64_t hash, IsIt&& isIt) const {
        for (std::size_t at = SlotOf(hash);; at = (at + 1) & (slots_.size() - 1)) {
            if (slots_[at] == 0) return false;
            if (TagOf(slots_[at]) == TagOf(hash) && isIt(static_cast<std::uint32_t>(slots_[at]) - 1)) return true;
        }
    }

private:
    // A slot has the upper half of the hash, and below it the child's number and 1.
    static std::uint64_t TagOf(std::uint64_t word) { return word >> 32; }
    std::size_t SlotOf(std::uint64_t hash) const { return static_cast<std::size_t>(hash) & (slots_.size() - 1); }

    std::vector<std::uint64_t> slots_;
};

// Thread-safe.
class NameIndex {
public:
    std::uint64_t HashOf(std::string_view name) const { return hash_(name); }
    // The table of a group, which `make` makes the first time; others that ask in the meantime wait.
    std::shared_ptr<const NameTable> TableOf(NodeNumber group,
                                             const std::function<std::shared_ptr<const NameTable>()>& make);

private:
    KeyedHash hash_;
    std::mutex mutex_;
    std::unordered_map<NodeNumber, std::shared_ptr<const NameTable>> tables_;
};

}  // namespace zentor
