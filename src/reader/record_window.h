// Records of one set of samples, read some at a time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "reader/document_bytes.h"
#include "reader/sample_set.h"

namespace zentor {

class RecordWindow {
public:
    // The set is in the document.
    RecordWindow(const DocumentBytes& bytes, const SampleSet& set)
        : bytes_(&bytes), start_(set.place.start), stride_(set.layout.Width() + 1) {}

    // A record with the byte after it, valid until the next call of a function that may read. When the window does not
    // hold it, it is moved so that it begins or ends with the record, as the latest move went on. Codes ZT_FILE_STAT,
    // ZT_OUT_OF_MEMORY.
    std::string_view Record(std::uint64_t index) {
        if (!Holds(index)) MoveTo(index);
        return {text_.get() + (index - first_) * stride_, static_cast<std::size_t>(stride_)};
    }
    // Moves the window to about `bytes` of records around one, between two others; the second is not included.
    void MoveAround(std::uint64_t index, std::uint64_t from, std::uint64_t to, std::size_t bytes);
    // From now on only these are read.
    void Limit(std::uint64_t from, std::uint64_t to) {
        from_ = from;
        to_ = to;
    }

    std::uint64_t First() const { return first_; }
    std::uint64_t End() const { return first_ + held_; }

private:
    bool Holds(std::uint64_t index) const { return index >= first_ && index - first_ < held_; }
    void MoveTo(std::uint64_t index);
    void Load(std::uint64_t first, std::uint64_t end);
    std::uint64_t RecordsIn(std::size_t bytes) const;

    const DocumentBytes* bytes_;
    std::uint64_t start_;
    std::uint64_t stride_;
    std::uint64_t from_ = 0;
    std::uint64_t to_ = 0;
    std::uint64_t first_ = 0;
    std::uint64_t held_ = 0;
    std::uint64_t capacity_ = 0;
    std::unique_ptr<char[]> text_;
};

}  // namespace zentor
