#include "reader/record_window.h"

#include <algorithm>

namespace zentor {

namespace {

constexpr std::size_t kAlong = std::size_t{1} << 15;

}  // namespace

std::uint64_t RecordWindow::RecordsIn(std::size_t bytes) const { return std::max<std::uint64_t>(1, bytes / stride_); }

void RecordWindow::MoveTo(std::uint64_t index) {
    if (index < from_ || index >= to_) return Load(index, index + 1);  // one of the ends
    const std::uint64_t records = RecordsIn(kAlong);
    const bool goesBack = held_ != 0 && index < first_;
    if (goesBack) {
        Load(index - std::min(index - from_, records - 1), index + 1);
    } else {
        Load(index, index + std::min(to_ - index, records));
    }
}

void RecordWindow::MoveAround(std::uint64_t index, std::uint64_t from, std::uint64_t to, std::size_t bytes) {
    const std::uint64_t records = RecordsIn(bytes);
    const std::uint64_t first = index - std::min(index - from, records / 2);
    Load(first, first + std::min(to - first, records));
}

void RecordWindow::Load(std::uint64_t first, std::uint64_t end) {
    const std::uint64_t size = (end - first) * stride_;
    held_ = 0;
    if (size > capacity_) {
        text_.reset();
        text_ = std::make_unique_for_overwrite<char[]>(size);
        capacity_ = size;
    }
    bytes_->Read(start_ + first * stride_, text_.get(), static_cast<std::size_t>(size));
    first_ = first;
    held_ = end - first;
}

}  // namespace zentor
