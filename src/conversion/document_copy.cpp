#include "conversion/document_copy.h"

#include <vector>

#include "errors/progress.h"
#include "files/file_io.h"

namespace zentor {

namespace {

constexpr std::size_t kCopyPiece = 65536;

void CopyContent(const std::string& from, const std::string& to) {
    const FileCloser source(File_IO::Open(from, true, Access::kRead));
    FileCloser target(File_IO::Open(to, false, Access::kReadWrite));
    std::vector<char> piece(kCopyPiece);
    while (const std::uint64_t got = File_IO::Read(source.get(), piece.data(), piece.size())) {
        ReportProgress();
        File_IO::Write(target.get(), piece.data(), got);
    }
    File_IO::Close(target.release());
}

// Leaves what was there before the copy failed: an empty file, or none.
void UndoCopy(const std::string& path, bool existed) noexcept {
    if (!existed) {
        DeleteQuietly(path);
        return;
    }
    try {
        os::CreateEmptyFile(path, {});
    } catch (...) {
        // Without memory for the system's form of the path the file stays as it is.
    }
}

}  // namespace

void CopyDocument(const std::string& from, const std::string& to) {
    const bool existed = !File_IO::Create(to);
    try {
        CopyContent(from, to);
    } catch (...) {
        UndoCopy(to, existed);
        throw;
    }
}

std::unique_ptr<PlacedFile> CopyBeside(const std::string& from, const std::string& target, bool isNew) {
    auto placed = std::make_unique<PlacedFile>(target, isNew);
    CopyDocument(from, placed->Path());
    return placed;
}

}  // namespace zentor
