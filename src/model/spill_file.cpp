#include "model/spill_file.h"

#include "errors/progress.h"
#include "errors/raise.h"

namespace ZT_PLUGIN {

using zentor::File_IO;

std::uint64_t SpillFile::Append(const char* bytes, std::size_t count) {
    zentor::ReportProgress();
    if (file_ == zentor::kNoFile) file_ = File_IO::OpenTempFile();
    const std::uint64_t offset = end_;
    File_IO::Seek(file_, static_cast<std::int64_t>(offset), 0);
    File_IO::Write(file_, bytes, count);
    end_ += count;
    return offset;
}

void SpillFile::Read(std::uint64_t offset, char* bytes, std::size_t count) {
    File_IO::Seek(file_, static_cast<std::int64_t>(offset), 0);
    for (std::size_t done = 0; done < count;) {
        const std::uint64_t read = File_IO::Read(file_, bytes + done, count - done);
        if (read == 0) zentor::Raise(zentor::kReadFailure, zentor::Quoted("File_IO::Read"), "ReadFile");
        done += read;
    }
}

void SpillFile::Close() noexcept {
    if (file_ != zentor::kNoFile) zentor::os::CloseFile(file_);
    file_ = zentor::kNoFile;
    end_ = 0;
}

}  // namespace ZT_PLUGIN
