// Where the samples of a document that is being built wait for their turn.
#pragma once

#include <cstddef>
#include <cstdint>

#include "files/file_io.h"

namespace ZT_PLUGIN {

// One temporary file for all nodes of a document: there may be more nodes than a process may have files open. It comes
// with the first bytes, and is gone when it is closed or the process ends, however that is. Codes of File_IO.
class SpillFile {
public:
    SpillFile() = default;
    ~SpillFile() { Close(); }
    SpillFile(const SpillFile&) = delete;
    SpillFile& operator=(const SpillFile&) = delete;

    // Returns where the bytes are.
    std::uint64_t Append(const char* bytes, std::size_t count);
    void Read(std::uint64_t offset, char* bytes, std::size_t count);
    void Close() noexcept;

private:
    zentor::FileHandle file_ = zentor::kNoFile;
    std::uint64_t end_ = 0;
};

}  // namespace ZT_PLUGIN
