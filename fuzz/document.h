// What the fuzz targets for documents share: exact copies of bytes, and opening them.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "errors/exception.h"
#include "reader/parser.h"

namespace zentor_fuzz {

inline void Require(bool holds) {
    if (!holds) __builtin_trap();
}

// Exactly the input's bytes, so that a sanitizer sees a read past their end.
class ExactCopy {
public:
    explicit ExactCopy(std::string_view bytes) : size_(bytes.size()), copy_(new char[bytes.size()]) {
        bytes.copy(copy_.get(), size_);
    }
    std::string_view bytes() const { return {copy_.get(), size_}; }

private:
    std::size_t size_;
    std::unique_ptr<char[]> copy_;
};

// The place of a fault is in the bytes, or right after them.
inline void RequirePlace(const ns_sensor::ZT_Exception& failure, std::string_view bytes) {
    Require(failure.extra1() >= 0 && static_cast<std::size_t>(failure.extra1()) <= bytes.size());
}

// Null when the document is refused. Anything but a fault of the document, with its place, is a fault of the library.
inline std::unique_ptr<zentor::VkjsonDocument> Open(std::string_view bytes, zentor::ParserChoice choice) {
    try {
        return zentor::ParseDocument(bytes, choice);
    } catch (const ns_sensor::ZT_Exception& failure) {
        Require((failure.code() >= 28 && failure.code() <= 47) || failure.code() == 49);
        RequirePlace(failure, bytes);
        return nullptr;
    }
}

// An input: its first byte chooses the parser, `rest` is what follows its first byte of value 1 after that, and the
// document stands between them.
struct Input {
    zentor::ParserChoice choice;
    std::string_view document;
    std::string_view rest;

    // Of at least one byte.
    explicit Input(std::string_view bytes)
        : choice(static_cast<zentor::ParserChoice>(static_cast<unsigned char>(bytes.front()) % 3)),
          document(bytes.substr(1)) {
        const std::size_t separator = document.find('\1');
        if (separator == std::string_view::npos) return;
        rest = document.substr(separator + 1);
        document = document.substr(0, separator);
    }
};

}  // namespace zentor_fuzz
