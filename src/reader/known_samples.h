// What queries of samples have found out about sets, for the next ones.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <unordered_map>

#include "reader/sample_reader.h"
#include "zentor/time_form.h"

namespace zentor {

// Numbers of records, up to the second one.
struct RecordSpan {
    std::uint64_t begin = 0;
    std::uint64_t end = 0;

    std::uint64_t Count() const { return end - begin; }
};

// A time that outlives the record from which it comes.
class KeptTime {
public:
    KeptTime() = default;
    explicit KeptTime(const Instant& time) : whole_(time.whole), decimals_(time.decimals) {}
    Instant Get() const { return {whole_, decimals_}; }

private:
    std::int64_t whole_ = 0;
    std::string decimals_;
};

// Records whose times rise, with the first and the last time of them.
struct SampleRun {
    RecordSpan records;
    KeptTime first;
    KeptTime last;
};

struct KnownSamples {
    SampleSet set;
    std::array<SampleRun, 2> runs;  // the second one is empty where times do not begin anew
};

// Those that were asked for, by the numbers of their nodes. Thread-safe. Nothing here is trusted to be still so: it
// says where to look.
class KnownSampleSets {
public:
    // Null when they are not known.
    std::shared_ptr<const KnownSamples> Find(std::uint64_t number) const {
        const std::lock_guard lock(mutex_);
        const auto found = sets_.find(number);
        return found == sets_.end() ? nullptr : found->second;
    }
    void Keep(std::uint64_t number, std::shared_ptr<const KnownSamples> samples) {
        constexpr std::size_t kMost = 4096;
        const std::lock_guard lock(mutex_);
        if (sets_.size() >= kMost) sets_.clear();
        sets_[number] = std::move(samples);
    }

private:
    mutable std::mutex mutex_;
    std::unordered_map<std::uint64_t, std::shared_ptr<const KnownSamples>> sets_;
};

}  // namespace zentor
