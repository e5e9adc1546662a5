#include "reader/mapped_document.h"

#include "errors/raise.h"

namespace zentor {

MappedDocument::MappedDocument(const std::string& path) {
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

void MappedDocument::CheckLength() const {
    if (file_.HasShrunk()) Raise(kCorruptFile);
}

}  // namespace zentor
