// The samples of one dynamic node until they are written: the latest in memory, those before them in the file that
// the nodes of its document share.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>
#include <vector>

#include "model/spill_file.h"
#include "util/short_copy.h"
#include "zentor/time_form.h"

namespace ZT_PLUGIN {

// One sample: its time string, and its value as text, the elements of an array with commas between them.
struct SampleRecord {
    std::string_view time;
    std::string_view value;
};

// The time string of a record that follows others. All of a document have one length.
class RecordTime {
public:
    std::string_view text() const { return {bytes_, size_}; }

    // How many bytes it begins with as another one does: up to the seconds or so, nearly always.
    std::size_t CountShared(std::string_view next) const {
        constexpr std::size_t kWord = sizeof(std::uint64_t);
        std::size_t shared = 0;
        for (; shared + kWord <= size_; shared += kWord) {
            if (std::memcmp(bytes_ + shared, next.data() + shared, kWord) != 0) break;
        }
        while (shared != size_ && bytes_[shared] == next[shared]) ++shared;
        return shared;
    }
    void Set(std::size_t shared, std::string_view rest) {
        zentor::CopyShort(bytes_ + shared, rest);
        size_ = shared + rest.size();
    }

private:
    char bytes_[zentor::TimeForm::kWidestFormatted];
    std::size_t size_ = 0;
};

// Takes records one after the other off blocks. A record is a byte that says how much of its time is that of the one
// before it, the rest of the time, and the value with a zero after it.
class RecordReader {
public:
    explicit RecordReader(std::size_t timeLength) : timeLength_(timeLength) {}

    // The next one at the front of a block, which lives as long as the block and until the next one. False at the end.
    bool Take(std::string_view& block, SampleRecord& record) {
        if (block.empty()) return false;
        const auto shared = static_cast<unsigned char>(block.front());
        const std::size_t rest = timeLength_ - shared;
        time_.Set(shared, block.substr(1, rest));
        const char* const value = block.data() + 1 + rest;
        record = {time_.text(), {value, std::strlen(value)}};
        block.remove_prefix(rest + record.value.size() + 2);
        return true;
    }

private:
    std::size_t timeLength_;
    RecordTime time_;
};

// The most that a node holds in memory.
inline constexpr std::size_t kSampleBufferLimit = 0x100000;

class SampleBuffer {
public:
    explicit SampleBuffer(SpillFile& file) : file_(file) {}
    SampleBuffer(const SampleBuffer&) = delete;
    SampleBuffer& operator=(const SampleBuffer&) = delete;

    std::uint64_t Count() const { return count_; }

    // That of the latest sample.
    std::string_view LatestTime() const { return time_.text(); }

    // Room for the text of the next sample's value, `size` bytes. Where the buffer would pass `limit`, it goes to the
    // file first. A record longer than the limit stands alone. Codes of File_IO.
    char* Add(std::string_view time, std::size_t size, std::size_t limit) {
        const std::size_t shared = time_.CountShared(time);
        const std::string_view rest = time.substr(shared);
        const std::size_t record = rest.size() + size + kFraming;
        if (used_ + record > room_) MakeRoom(record, limit);
        time_.Set(shared, rest);
        char* out = tail_.get() + used_;
        *out++ = static_cast<char>(shared);
        out = zentor::CopyShort(out, rest);
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

private:
    static constexpr std::size_t kFraming = 2;

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
    RecordTime time_;
};

}  // namespace ZT_PLUGIN
