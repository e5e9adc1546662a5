#include "model/sample_buffer.h"

#include <algorithm>
#include <cstring>

namespace ZT_PLUGIN {

void SampleBuffer::MakeRoom(std::size_t record, std::size_t limit) {
    constexpr std::size_t kFirstRoom = 1024;
    if (used_ != 0 && used_ + record > limit) {
        Spill();
        if (room_ > limit) {  // for a long record that has gone
            tail_ = nullptr;
            room_ = 0;
        }
    }
    if (used_ + record <= room_) return;
    const std::size_t room = std::max(used_ + record, std::min(std::max(room_ * 2, kFirstRoom), limit));
    std::unique_ptr<char[]> larger(new char[room]);
    if (used_ != 0) std::memcpy(larger.get(), tail_.get(), used_);
    tail_ = std::move(larger);
    room_ = room;
}

void SampleBuffer::Spill() {
    spilled_.reserve(spilled_.size() + 1);
    spilled_.push_back({file_.Append(tail_.get(), used_), used_});
    used_ = 0;
}

std::string_view SampleBuffer::Load(const Block& block) {
    loaded_.resize(std::max(loaded_.size(), block.size));
    file_.Read(block.offset, loaded_.data(), block.size);
    return {loaded_.data(), block.size};
}

void SampleBuffer::Clear() noexcept {
    spilled_ = {};
    loaded_ = {};
    tail_ = {};
    used_ = room_ = 0;
}

}  // namespace ZT_PLUGIN
