// Watches a document while it is written for bytes that texts cannot have as they are.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace zentor {

// The first control character or backslash of a text; npos when there is none.
std::size_t FindUnescaped(std::string_view text);

class TextWatch {
public:
    struct Fault {
        char byte;
        std::uint64_t offset;  // in the document
    };

    // What goes to the document next.
    void Pass(std::string_view bytes) {
        if (!first_) Find(bytes);
        passed_ += bytes.size();
    }
    // The document has been cut.
    void CutTo(std::uint64_t length) {
        passed_ = length;
        if (first_ && first_->offset >= length) first_.reset();
    }
    const std::optional<Fault>& First() const { return first_; }

private:
    void Find(std::string_view bytes);

    std::uint64_t passed_ = 0;
    std::optional<Fault> first_;
};

}  // namespace zentor
