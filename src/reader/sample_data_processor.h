// The samples of a document, which are not parsed when it is opened but found by arithmetic when they are asked for.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "reader/sample_index.h"
#include "reader/sample_reader.h"
#include "reader/temp_file.h"
#include "util/time_form.h"
#include "zentor/records.h"

namespace zentor {

// Samples of one set in the order in which a query wants them.
class SampleRange {
public:
    SampleRange(SampleReader reader, const SampleSet& set, std::uint64_t begin, std::uint64_t end, bool isReversed)
        : reader_(reader), set_(set), begin_(begin), end_(end), isReversed_(isReversed) {}

    std::uint64_t Count() const { return end_ - begin_; }
    // The sample at a place in the range. Code 39.
    void Read(std::uint64_t place, ZT_Sample& sample) const {
        reader_.Read(isReversed_ ? end_ - 1 - place : begin_ + place, sample);
    }
    // All of them. Codes 34, 39.
    std::vector<ZT_Sample> ReadAll() const;

private:
    SampleReader reader_;
    const SampleSet& set_;
    std::uint64_t begin_;
    std::uint64_t end_;
    bool isReversed_;
};

class ZT_SampleDataProcessor {
public:
    // Copies the array that begins with the "[" at `begin`, as it stands, to a temporary file; returns where it ends,
    // after the "]". Every square bracket counts, also in strings. Code 32 at the end of the bytes without it; 14,
    // 15, 21.
    std::size_t CopySamples(std::string_view bytes, std::size_t begin);

    // Makes the set of a dynamic node known, which has been validated; false when its identifier is known already.
    bool AddNode(const JsonValue& node);
    const SampleSets& Sets() const { return sets_; }
    // When all nodes and the time information are known: finds the sets in the array that was copied, if one was. Codes
    // of IndexSampleSets.
    void IndexSamples(std::string_view bytes, const TimeForm& form);

    // The samples from `start` to `end`, or back from a later start to an earlier end; scales are not 0. `bytes` are
    // those of the document. Codes 35 (no node has this identifier), 36, 38, 39.
    SampleRange FindRange(std::string_view bytes, std::string_view id, const TimeForm& form, ZT_Time start,
                          ZT_Time end) const;
    // The latest sample at or before `time`, if any.
    SampleRange FindLatest(std::string_view bytes, std::string_view id, const TimeForm& form, ZT_Time time) const;

    struct TimeSpan {
        std::string first;
        std::string last;
    };
    // The times of the first and the last sample; nothing where there are none, or none that can be read.
    std::optional<TimeSpan> FindTimeSpan(std::string_view bytes, std::string_view id, const TimeForm& form) const;

private:
    const SampleSet& RequireSamples(std::string_view id) const;

    TempFileHandler copy_;
    std::size_t begin_ = 0;  // of the array, in the document
    std::size_t end_ = 0;
    SampleSets sets_;
};

}  // namespace zentor
