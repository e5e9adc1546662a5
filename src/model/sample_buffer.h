// The samples of one dynamic node until they are written: in memory up to a limit, and those before in a temporary
// file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "util/short_copy.h"

namespace ZT_PLUGIN {

// One sample: its time string, and its value as text, the elements of an array with commas between them. A record is
// both, each with a zero after it.
struct SampleRecord {
    std::string_view time;
    std::string_view value;
};

// The most that a node holds in memory.
inline constexpr std::size_t kSampleBufferLimit = 0x100000;

class SampleBuffer {
public:
    SampleBuffer() = default;
    ~SampleBuffer() { Clear(); }
    SampleBuffer(const SampleBuffer&) = delete;
    SampleBuffer& operator=(const SampleBuffer&) = delete;

    std::uint64_t Count() const { return count_; }

    // Room for the text of the next sample's value, `size` bytes. Where the buffer would pass `limit`, it goes to the
    // temporary file first, which is open only meanwhile: there may be more nodes than a process may have files open.
    // A record longer than the limit stands alone. Codes of File_IO.
    char* Add(std::string_view time, std::size_t size, std::size_t limit) {
        const std::size_t record = time.size() + size + kFraming;
        if (used_ + record > room_) MakeRoom(record, limit);
        char* out = tail_.get() + used_;
        out = zentor::CopyShort(out, time);
        *out++ = '\0';
        out[size] = '\0';
        used_ += record;
        ++count_;
        return out;
    }

    // Hands the samples to `take`, in order, block by block: each time the bytes of whole records, which live until it
    // returns. Empties the buffer and deletes the file. Codes of File_IO.
    template <class Take>
    void Drain(Take&& take) {
        for (std::size_t block = 0; block < spilled_.size(); ++block) take(LoadBlock(block));
        take(std::string_view(tail_.get(), used_));
        Clear();
    }

    // Takes the next record off the front of a block; its time has `timeLength` bytes. False at the end.
    static bool TakeRecord(std::string_view& block, std::size_t timeLength, SampleRecord& record);

    void Clear() noexcept;

private:
    static constexpr std::size_t kFraming = 2;  // a zero after each text

    void MakeRoom(std::size_t record, std::size_t limit);
    void Spill();
    std::string_view LoadBlock(std::size_t block);

    std::unique_ptr<char[]> tail_;  // the latest records
    std::size_t used_ = 0;
    std::size_t room_ = 0;
    std::vector<std::size_t> spilled_;  // the sizes of the blocks in the file
    std::vector<char> loaded_;
    std::uint64_t loadedFrom_ = 0;
    std::uint64_t count_ = 0;
    std::string path_;  // of the file, if there is one
};

}  // namespace ZT_PLUGIN
