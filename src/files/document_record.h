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

// A record for a new, empty, temporary document in `folder`, with a name of its own that nobody can guess and that ends
// in ".vkjson". Where the system can tell, nobody else may read it.
std::shared_ptr<DocumentRecord> CreateTemporaryDocument(const std::string& folder);

}  // namespace zentor
