// The samples of one dynamic node until they are written: the latest in memory, those before them in the file that
// the nodes of its document share.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "model/spill_file.h"
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
    explicit SampleBuffer(SpillFile& file) : file_(file) {}
    SampleBuffer(const SampleBuffer&) = delete;
    SampleBuffer& operator=(const SampleBuffer&) = delete;

    std::uint64_t Count() const { return count_; }

    // Room for the text of the next sample's value, `size` bytes. Where the buffer would pass `limit`, it goes to the
    // file first. A record longer than the limit stands alone. Codes of File_IO.
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
    // returns. Empties the buffer. Codes of File_IO.
    template <class Take>
    void Drain(Take&& take) {
        for (const Block& block : spilled_) take(Load(block));
        take(std::string_view(tail_.get(), used_));
        Clear();
    }

    // Takes the next record off the front of a block; its time has `timeLength` bytes. False at the end.
    static bool TakeRecord(std::string_view& block, std::size_t timeLength, SampleRecord& record);

private:
    static constexpr std::size_t kFraming = 2;  // a zero after each text

    struct Block {
        std::uint64_t offset;  // in the file
        std::size_t size;
    };

    void MakeRoom(std::size_t record, std::size_t limit);
    void Spill();
    void Clear() noexcept;
    std::string_view Load(const Block& block);

    SpillFile& file_;
    std::unique_ptr<char[]> tail_;  // the latest records
    std::size_t used_ = 0;
    std::size_t room_ = 0;
    std::vector<Block> spilled_;
    std::vector<char> loaded_;
    std::uint64_t count_ = 0;
};

}  // namespace ZT_PLUGIN
