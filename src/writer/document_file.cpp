#include "writer/document_file.h"

#include <utility>

#include "errors/progress.h"
#include "model/client_boundary.h"

namespace zentor {

DocumentFile::~DocumentFile() { Abandon(); }

void DocumentFile::Abandon() noexcept {
    if (file_ != kNoFile) os::CloseFile(std::exchange(file_, kNoFile));
    if (std::exchange(isUnfinished_, false)) DeleteQuietly(path_);
}

template <class Step>
void DocumentFile::Guarded(Step&& step) {
    try {
        ZT_PLUGIN::TranslateFailures(step);
    } catch (...) {
        Abandon();
        throw;
    }
}

void DocumentFile::Write(const char* bytes, std::size_t count) {
    Guarded([&] {
        if (file_ == kNoFile) {
            File_IO::Create(path_);
            isUnfinished_ = true;
            file_ = File_IO::Open(path_, true, Access::kReadWrite);
        }
        ReportProgress();
        File_IO::Write(file_, bytes, count);
    });
}

void DocumentFile::CutTo(std::uint64_t length) {
    Guarded([&] { File_IO::SetEOF(file_, length); });
}

void DocumentFile::Close() {
    Guarded([&] {
        File_IO::Close(std::exchange(file_, kNoFile));
        isUnfinished_ = false;
    });
}

}  // namespace zentor
