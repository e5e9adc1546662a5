#include "reader/mapped_document.h"

#include "errors/progress.h"
#include "errors/raise.h"

namespace zentor {

MappedDocument::MappedDocument(const std::string& path, bool privateCopy) {
    Map(path);
    if (!privateCopy) return;
    CopyMapped();
    file_.Unmap();
    Map(copy_.Path());
    isPrivate_ = true;
    copy_.DeleteName();
}

void MappedDocument::Map(const std::string& path) {
    switch (file_.Map(path)) {
        case MapResult::kMapped:
            return;
        case MapResult::kCannotOpen:
            Raise(kFailureOpeningFile);
        case MapResult::kSizeUnknown:
            Raise(kCorruptFile);
        case MapResult::kEmpty:
            Raise(kEmptyFile);
        case MapResult::kCannotMap:
            break;
    }
    Raise(kFailureFileMapping);
}

void MappedDocument::CopyMapped() {
    constexpr std::size_t kPiece = std::size_t{1} << 20;
    copy_.Create();
    for (std::size_t offset = 0; offset < bytes().size(); offset += kPiece) {
        copy_.Write(bytes().substr(offset, kPiece));
        Pass(offset);
        ReportProgress();
    }
    copy_.Close();
}

void MappedDocument::CheckUnchanged() const {
    if (!isPrivate_ && file_.HasChanged()) Raise(kCorruptFile);
}

void MappedDocument::Read(std::uint64_t offset, char* to, std::size_t count) const {
    if (!file_.ReadAt(offset, to, count)) Raise(kCorruptFile);
}

}  // namespace zentor
