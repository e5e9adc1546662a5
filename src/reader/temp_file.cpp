#include "reader/temp_file.h"

#include <utility>

#include "errors/exception.h"
#include "errors/raise.h"

namespace zentor {

namespace {

// The reader has messages of its own for the failures of a file operation.
template <class Operation>
void Run(const ErrorEntry& failure, Operation&& operation) {
    try {
        operation();
    } catch (const ns_sensor::ZT_Exception& cause) {
        Raise({failure, cause.extra1()});
    }
}

}  // namespace

void TempFileHandler::Create() {
    Discard();
    Run(kTempDirNotFound, [] { File_IO::TempFolder(); });
    Run(kTempFileNameError, [&] { File_IO::GetTempFile(path_); });
    Run(kFailureOpeningTempFile, [&] { file_ = File_IO::Open(path_, false, Access::kReadWrite); });
}

void TempFileHandler::Write(std::string_view bytes) {
    Run(kFailureWritingTempFile, [&] { File_IO::Write(file_, bytes.data(), bytes.size()); });
}

void TempFileHandler::Close() {
    const FileHandle file = std::exchange(file_, kNoFile);
    Run(kFailureWritingTempFile, [&] { File_IO::Close(file); });
}

void TempFileHandler::DeleteName() noexcept {
    if (os::DeleteFileAt(path_) == os::Status::kOk) path_.clear();
}

void TempFileHandler::Discard() noexcept {
    if (file_ != kNoFile) os::CloseFile(file_);
    file_ = kNoFile;
    if (!path_.empty()) DeleteQuietly(path_);
    path_.clear();
}

}  // namespace zentor
