#include "model/sample_buffer.h"

#include <algorithm>
#include <cstring>

#include "errors/raise.h"
#include "util/file_io.h"

namespace ZT_PLUGIN {

using zentor::Access;
using zentor::File_IO;
using zentor::FileCloser;

namespace {

constexpr std::size_t kFraming = 2;  // a zero after each text

}  // namespace

char* SampleBuffer::Add(std::string_view time, std::size_t size, std::size_t limit) {
    const std::size_t record = time.size() + size + kFraming;
    if (!tail_.empty() && tail_.size() + record > limit) Spill();
    const std::size_t at = tail_.size();
    if (tail_.capacity() < at + record) {
        tail_.reserve(std::max(at + record, std::min(std::max(at * 2, std::size_t{1024}), limit)));
    }
    tail_.resize(at + record);
    char* out = tail_.data() + at;
    std::memcpy(out, time.data(), time.size());
    out += time.size();
    *out++ = '\0';
    out[size] = '\0';
    ++count_;
    return out;
}

void SampleBuffer::Spill() {
    if (path_.empty()) File_IO::GetTempFile(path_);
    spilled_.reserve(spilled_.size() + 1);
    FileCloser file(File_IO::Open(path_, true, Access::kAppend));
    File_IO::Write(file.get(), tail_.data(), tail_.size());
    File_IO::Close(file.release());
    spilled_.push_back(tail_.size());
    tail_.clear();
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
    loadedFrom_ = 0;
}

}  // namespace ZT_PLUGIN
