// The bytes of an open document, as queries read them: what they need, copied from its place.
#pragma once

#include <cstddef>
#include <cstdint>

namespace zentor {

class DocumentBytes {
public:
    virtual ~DocumentBytes() = default;

    virtual std::uint64_t Size() const = 0;
    // Code ZT_FILE_STAT when the document is no longer as it was when it was opened.
    virtual void CheckUnchanged() const = 0;
    // Copies the bytes from `offset` on. Code ZT_FILE_STAT when they are not all there (any more).
    virtual void Read(std::uint64_t offset, char* to, std::size_t count) const = 0;
};

}  // namespace zentor
