#include "model/sample_buffer.h"

#include <algorithm>

#include "errors/raise.h"
#include "files/file_io.h"

namespace ZT_PLUGIN {

using zentor::Access;
using zentor::File_IO;
using zentor::FileCloser;

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
    if (path_.empty()) File_IO::GetTempFile(path_);
    spilled_.reserve(spilled_.size() + 1);
    FileCloser file(File_IO::Open(path_, true, Access::kAppend));
    File_IO::Write(file.get(), tail_.get(), used_);
    File_IO::Close(file.release());
    spilled_.push_back(used_);
    used_ = 0;
}

std::string_view SampleBuffer::LoadBlock(std::size_t block) {
    const std::size_t size = spilled_[block];
    loaded_.resize(std::max(loaded_.size(), size));
    FileCloser file(File_IO::Open(path_, true, Access::kRead));
    File_IO::Seek(file.get(), static_cast<std::int64_t>(loadedFrom_), 0);
    for (std::size_t done = 0; done < size;) {
        const std::uint64_t read = File_IO::Read(file.get(), loaded_.data() + done, size - done);
        if (read == 0) zentor::Raise(zentor::kReadFailure, zentor::Quoted("File_IO::Read"), "ReadFile");
        done += read;
    }
    File_IO::Close(file.release());
    loadedFrom_ += size;
    return {loaded_.data(), size};
}

bool SampleBuffer::TakeRecord(std::string_view& block, std::size_t timeLength, SampleRecord& record) {
    if (block.empty()) return false;
    record.time = block.substr(0, timeLength);
    const char* const value = block.data() + timeLength + 1;
    record.value = {value, std::strlen(value)};
    block.remove_prefix(timeLength + record.value.size() + kFraming);
    return true;
}

void SampleBuffer::Clear() noexcept {
    if (!path_.empty()) zentor::DeleteQuietly(path_);
    path_.clear();
    spilled_ = {};
    loaded_ = {};
    tail_ = {};
    used_ = room_ = 0;
    loadedFrom_ = 0;
}

}  // namespace ZT_PLUGIN
