#include "conversion/output_placement.h"

#include "conversion/document_copy.h"
#include "errors/exception.h"
#include "errors/last_exception.h"
#include "errors/raise.h"
#include "files/file_io.h"

namespace zentor {

namespace {

[[noreturn]] void RefuseOutput() { Raise(kCreateFile, Quoted("File_IO::Create")); }

// Exchanging files goes by their folder's permissions alone; a file that is protected itself is not to be replaced.
void CheckWritable(const std::string& path) {
    FileHandle file = kNoFile;
    if (os::OpenFile(path, true, Access::kReadWrite, file) != os::Status::kOk) RefuseOutput();
    os::CloseFile(file);
}

}  // namespace

std::string CheckOutput(const std::string& output, bool isNew) {
    const std::size_t separator = output.find_last_of(os::kPathSeparators);
    // The separator stays: the folder may be the root.
    std::string folder = output.substr(0, separator == std::string::npos ? 0 : separator + 1);
    if (File_IO::GetFileMode(folder) != PathKind::kFolder) Raise(kDirectoryDoesNotExist);
    const PathKind kind = File_IO::GetFileMode(output);
    if (kind == PathKind::kFile) {
        if (isNew) RefuseOutput();
        CheckWritable(output);
    } else if (kind != PathKind::kNone) {
        Raise(kNotAFile, Quoted("File_IO::Create"));
    }
    return folder;
}

std::shared_ptr<DocumentRecord> CopyBeside(const std::string& from, const std::string& output, bool isNew) {
    auto record = CreateTemporaryDocument(CheckOutput(output, isNew));
    CopyDocument(from, record->documentPath);
    return record;
}

OutputPlacement::OutputPlacement(std::shared_ptr<DocumentRecord> record, const std::string& output, bool isNew)
    : record_(std::move(record)) {
    std::string made = output;  // nothing can fail once the files have changed places
    if (File_IO::GetFileMode(output) == PathKind::kNone) {
        os::GiveUsualPermissions(record_->documentPath);
        File_IO::Rename(record_->documentPath, output);
    } else if (isNew) {
        RefuseOutput();  // it has come meanwhile
    } else {
        os::CopyPermissions(output, record_->documentPath);
        File_IO::Sync(record_->documentPath);  // before what was there can go
        File_IO::Exchange(output, record_->documentPath);
        replacedPath_.swap(record_->documentPath);
    }
    record_->documentPath.swap(made);
    record_->isTemporary = false;
}

OutputPlacement::~OutputPlacement() {
    if (!isKept_) TakeBack();
}

void OutputPlacement::TakeBack() noexcept {
    record_->isTemporary = true;
    if (replacedPath_.empty()) return;        // the document goes from where it is
    const auto failure = GetLastException();  // the one that is being reported
    try {
        File_IO::Exchange(record_->documentPath, replacedPath_);
        record_->documentPath.swap(replacedPath_);
    } catch (...) {
        // Both stay where they are rather than that the one that was there before is lost.
        record_->isTemporary = false;
        if (failure) SetLastException(*failure);
    }
}

void OutputPlacement::Keep() noexcept {
    isKept_ = true;
    if (!replacedPath_.empty()) DeleteQuietly(replacedPath_);
}

}  // namespace zentor
