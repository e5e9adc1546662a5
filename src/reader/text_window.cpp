#include "reader/text_window.h"

#include <algorithm>

#include "errors/raise.h"

namespace zentor {

std::string_view TextWindow::At(std::uint64_t offset, std::size_t least) {
    const std::uint64_t size = bytes_.Size();
    if (offset > size) Raise(kCorruptFile);
    const auto needed = static_cast<std::size_t>(std::min<std::uint64_t>(least, size - offset));
    if (offset < start_ || offset + needed > start_ + size_) {
        const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(std::max(least, usual_), size - offset));
        size_ = 0;
        if (capacity_ < wanted) {
            text_.reset();
            text_ = std::make_unique_for_overwrite<char[]>(wanted);
            capacity_ = wanted;
        }
        bytes_.Read(offset, text_.get(), wanted);
        start_ = offset;
        size_ = wanted;
    }
    const auto skipped = static_cast<std::size_t>(offset - start_);
    return {text_.get() + skipped, size_ - skipped};
}

}  // namespace zentor
