// Whether names are all different, without keeping them.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "util/keyed_hash.h"

namespace zentor {

// Names that are made by counting, such as "data1" and "data2", follow each other: of each run of letters in front,
// the latest name is kept, and one that comes after it is a new one. Where names do not follow each other, Add fails,
// and all of them are added again to a list of hashes, of which equal ones tell names that may be the same.
class RisingNames {
public:
    // False when nothing is known about the name.
    bool Add(std::string_view name);

private:
    struct Series {
        std::string_view prefix;
        std::string_view latest;  // what follows the prefix
    };
    static constexpr std::size_t kMostSeries = 8;

    std::vector<Series> series_;  // names are borrowed
};

class NameHashes {
public:
    void Add(std::string_view name) { hashes_.push_back(hash_(name)); }
    // Whether no two hashes are equal: then no two names are. Changes their order.
    bool AreUnique();

private:
    KeyedHash hash_;
    std::vector<std::uint64_t> hashes_;
};

}  // namespace zentor
