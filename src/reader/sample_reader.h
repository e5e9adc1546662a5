// Reads single samples of one set from their places in the document.
#pragma once

#include <optional>
#include <string_view>

#include "errors/error_table.h"
#include "reader/sample_set.h"
#include "util/time_form.h"
#include "zentor/records.h"

namespace zentor {

// Reads from the bytes of the document each time anew. The set is in the document, as far as its length goes; an index
// is below its count. Every failure has code 39 and the offset of the sample.
class SampleReader {
public:
    SampleReader(std::string_view bytes, const SampleSet& set, const TimeForm& form)
        : bytes_(bytes), set_(set), width_(set.RecordWidth()), form_(form) {}

    // The time of a sample; nothing when there is none that can be read.
    std::optional<Instant> FindTime(std::uint64_t index) const;
    Instant TimeOf(std::uint64_t index) const;
    std::string_view TimeText(std::uint64_t index) const {
        return Record(index).substr(kRecordStart.size(), set_.timeWidth);
    }

    // Replaces the sample.
    void Read(std::uint64_t index, ZT_Sample& sample) const;

private:
    std::string_view Record(std::uint64_t index) const {
        return bytes_.substr(set_.start + index * (width_ + 1), width_);
    }
    void CheckRecord(std::uint64_t index, std::string_view record) const;
    double ReadNumber(std::uint64_t index, std::string_view quoted) const;
    void ReadNumberArray(std::uint64_t index, std::string_view value, std::vector<double>& numbers) const;
    std::string ReadPaddedString(std::uint64_t index, std::string_view value) const;
    [[noreturn]] void RaiseAt(const ErrorEntry& entry, std::uint64_t index) const;

    std::string_view bytes_;
    const SampleSet& set_;
    std::uint64_t width_;
    const TimeForm& form_;
};

}  // namespace zentor
