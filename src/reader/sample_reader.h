// Reads single samples of one set from their places in the document.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "errors/error_table.h"
#include "reader/record_window.h"
#include "reader/sample_set.h"
#include "zentor/records.h"
#include "zentor/time_form.h"

namespace zentor {

// Reads from the bytes of the document each time anew. The set is in the document, as far as its length goes; an index
// is below its count. What is malformed has ZT_SAMPLE_DATA and the offset of the sample; any function can fail with
// ZT_FILE_STAT and ZT_OUT_OF_MEMORY.
class SampleReader {
public:
    SampleReader(const DocumentBytes& bytes, SampleSet set, const TimeForm& form)
        : window_(bytes, set), set_(std::move(set)), form_(form) {}

    const SampleSet& set() const { return set_; }
    RecordWindow& window() { return window_; }

    // The time of a sample, valid until the next sample is read; nothing when there is none that can be read.
    std::optional<Instant> FindTime(std::uint64_t index);
    Instant TimeOf(std::uint64_t index);
    std::string TimeText(std::uint64_t index) {
        return std::string(window_.Record(index).substr(RecordLayout::kTimeOffset, set_.layout.timeWidth));
    }
    // What is malformed about a record, its value aside.
    RecordFault FaultOf(std::uint64_t index) {
        RecordParts parts;
        return TakeApart(index, parts);
    }
    // Nothing without a fault.
    void RaiseFault(RecordFault fault, std::uint64_t index) const;

    // Replaces the sample.
    void Read(std::uint64_t index, ZT_Sample& sample);
    // Reads all of them; their times must not go back.
    void CheckAll();

private:
    RecordFault TakeApart(std::uint64_t index, RecordParts& parts);
    void ReadNumberArray(std::uint64_t index, std::string_view value, std::vector<double>& numbers) const;
    std::string ReadPaddedString(std::uint64_t index, std::string_view value) const;
    [[noreturn]] void RaiseAt(const ErrorEntry& entry, std::uint64_t index) const;

    RecordWindow window_;
    SampleSet set_;
    TimeForm form_;
};

// The samples of a set at the place that was found when the document was opened, described by the outline as it is now.
// Code ZT_FILE_STAT when they cannot be there.
SampleReader MakeSampleReader(const DocumentBytes& bytes, SampleSet set, const SamplePlace& place,
                              const TimeForm& form);

}  // namespace zentor
