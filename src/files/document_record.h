// The document that stands for an input.
#pragma once

#include <memory>
#include <string>

namespace zentor {

// Shared by everything that reads the document; the last one deletes it when it is temporary.
struct DocumentRecord {
    std::string documentPath;  // the input itself, or what a converter made of it
    bool isTemporary = false;  // made by the library
    // Written by the library, or recognised by its first property; otherwise the reader looks.
    bool isKnownVersion2 = false;

    DocumentRecord() = default;
    ~DocumentRecord();
    DocumentRecord(const DocumentRecord&) = delete;
    DocumentRecord& operator=(const DocumentRecord&) = delete;
};

// A record for a new, empty, temporary document in the folder for temporary files. Codes ZT_TEMP_FOLDER, ZT_TEMP_FILE.
std::shared_ptr<DocumentRecord> CreateTemporaryDocument();

}  // namespace zentor
