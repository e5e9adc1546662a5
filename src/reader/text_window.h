// A piece of a document's text that moves along.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "reader/document_bytes.h"

namespace zentor {

class TextWindow {
public:
    // `usual`: how many bytes are read at once.
    TextWindow(const DocumentBytes& bytes, std::size_t usual) : bytes_(bytes), usual_(usual) {}

    // The text from `offset` on: at least `least` bytes, or up to the end of the document. Valid until the next call.
    // Codes ZT_FILE_STAT, ZT_OUT_OF_MEMORY.
    std::string_view At(std::uint64_t offset, std::size_t least);
    const DocumentBytes& bytes() const { return bytes_; }

private:
    const DocumentBytes& bytes_;
    std::size_t usual_;
    std::size_t capacity_ = 0;
    std::unique_ptr<char[]> text_;
    std::uint64_t start_ = 0;
    std::size_t size_ = 0;
};

}  // namespace zentor
