#include "conversion/output_placement.h"

#include "errors/raise.h"
#include "util/file_io.h"

namespace zentor {

namespace {

// Whether a file is there that the document has to replace.
bool ReplacesFile(const std::string& output) {
    switch (File_IO::GetFileMode(output)) {
        case PathKind::kNone:
            return false;
        case PathKind::kFile:
            return true;
        default:
            Raise(kNotAFile, Quoted("File_IO::Create"));
    }
}

void Exchange(const std::string& from, const std::string& to, bool replaces) {
    if (replaces) {
        File_IO::SwapData(to, from);
    } else {
        File_IO::Rename(from, to);
    }
}

}  // namespace

OutputPlacement::OutputPlacement(std::shared_ptr<DocumentRecord> record, const std::string& output)
    : record_(std::move(record)), temporaryPath_(output), replacesFile_(ReplacesFile(output)) {
    Exchange(record_->documentPath, output, replacesFile_);
    record_->documentPath.swap(temporaryPath_);
    record_->isTemporary = false;
}

OutputPlacement::~OutputPlacement() {
    if (isKept_) return;
    try {
        Exchange(record_->documentPath, temporaryPath_, replacesFile_);
        record_->documentPath.swap(temporaryPath_);
        record_->isTemporary = true;
    } catch (...) {
        // Whatever was there before stays under the temporary name rather than be lost.
    }
}

void OutputPlacement::Keep() noexcept {
    isKept_ = true;
    if (replacesFile_) DeleteQuietly(temporaryPath_);
}

std::string CheckOutputFolder(const std::string& output) {
    const std::size_t separator = output.find_last_of(os::kPathSeparators);
    // The separator stays: the folder may be the root.
    const std::string folder = output.substr(0, separator == std::string::npos ? 0 : separator + 1);
    if (File_IO::GetFileMode(folder) != PathKind::kFolder) Raise(kDirectoryDoesNotExist);
    return folder;
}

}  // namespace zentor
