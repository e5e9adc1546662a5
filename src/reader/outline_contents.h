// What opening a document finds in its outline.
#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "reader/outline_index.h"
#include "reader/sample_set.h"
#include "util/keyed_hash.h"

namespace zentor {

// Dynamic nodes by the identifiers of their sample sets. Texts are borrowed from the document's bytes, or kept here
// where an escape had to be decoded.
class SampleSetIds {
public:
    // False when there is such a set already.
    bool Add(std::string_view id, std::uint64_t dynamicNumber) { return numbers_.emplace(id, dynamicNumber).second; }
    bool AddCopy(std::string_view id, std::uint64_t dynamicNumber) {
        return Add(copies_.emplace_back(id), dynamicNumber);
    }
    // The dynamic node's number; null when there is none.
    const std::uint64_t* Find(std::string_view id) const {
        const auto found = numbers_.find(id);
        return found == numbers_.end() ? nullptr : &found->second;
    }

private:
    std::deque<std::string> copies_;
    std::unordered_map<std::string_view, std::uint64_t, KeyedHash> numbers_;
};

struct OutlineContents {
    OutlineIndex index;
    // For finding the samples, while the document is being opened.
    SampleSetIds ids;
    std::vector<SampleSet> sets;  // by the numbers of the dynamic nodes
};

}  // namespace zentor
