#include "reader/unique_names.h"

#include <algorithm>
#include <cstddef>

#include "util/number_text.h"

namespace zentor {

namespace {

// By length, and in the order of bytes where that is the same: so counted names follow each other.
bool Follows(std::string_view name, std::string_view other) {
    return name.size() != other.size() ? name.size() > other.size() : name > other;
}

constexpr int kBucketBits = 12;
constexpr std::size_t kBuckets = std::size_t{1} << kBucketBits;

std::size_t BucketOf(std::uint64_t hash) { return static_cast<std::size_t>(hash >> (64 - kBucketBits)); }

}  // namespace

bool RisingNames::Add(std::string_view name) {
    for (Series& series : series_) {
        const std::size_t length = series.prefix.size();
        if (!name.starts_with(series.prefix) || (name.size() > length && !IsDigit(name[length]))) continue;
        const std::string_view rest = name.substr(length);
        if (!Follows(rest, series.latest)) return false;
        series.latest = rest;
        return true;
    }
    if (series_.size() == kMostSeries) return false;
    const auto prefixEnd = std::find_if(name.begin(), name.end(), [](char c) { return IsDigit(c); });
    const auto length = static_cast<std::size_t>(prefixEnd - name.begin());
    series_.push_back({name.substr(0, length), name.substr(length)});
    return true;
}

// Sorts in place, first into buckets that fit into the processor's cache.
bool NameHashes::AreUnique() {
    std::vector<std::size_t> ends(kBuckets + 1, 0);
    for (const std::uint64_t hash : hashes_) ++ends[BucketOf(hash) + 1];
    for (std::size_t k = 0; k < kBuckets; ++k) ends[k + 1] += ends[k];
    std::vector<std::size_t> next(ends.begin(), ends.end() - 1);
    for (std::size_t bucket = 0; bucket < kBuckets; ++bucket) {
        while (next[bucket] != ends[bucket + 1]) {
            std::uint64_t& hash = hashes_[next[bucket]];
            const std::size_t home = BucketOf(hash);
            if (home == bucket) {
                ++next[bucket];
            } else {
                std::swap(hash, hashes_[next[home]++]);
            }
        }
    }
    for (std::size_t bucket = 0; bucket < kBuckets; ++bucket) {
        const auto begin = hashes_.begin() + static_cast<std::ptrdiff_t>(ends[bucket]);
        const auto end = hashes_.begin() + static_cast<std::ptrdiff_t>(ends[bucket + 1]);
        std::sort(begin, end);
        if (std::adjacent_find(begin, end) != end) return false;
    }
    return true;
}

}  // namespace zentor
