#include "files/document_record.h"

#include "files/file_io.h"
#include "files/placed_file.h"

namespace zentor {

DocumentRecord::~DocumentRecord() {
    if (isTemporary) DeleteQuietly(documentPath);
}

std::shared_ptr<DocumentRecord> CreateTemporaryDocument() {
    auto record = std::make_shared<DocumentRecord>();
    record->isKnownVersion2 = true;
    record->documentPath = CreateUniqueFile(File_IO::TempFolder());
    record->isTemporary = true;
    return record;
}

}  // namespace zentor
