// The document that stands for an input.
#pragma once

#include <memory>
#include <string>

namespace zentor {

// Shared by everything that reads the document; the last one deletes it when it is temporary.
struct DocumentRecord {
    std::string documentPath;  // the input itself, or what a converter made of it
    bool isTemporary = false;  // made by the library

    DocumentRecord() = default;
    ~DocumentRecord();
    DocumentRecord(const DocumentRecord&) = delete;
    DocumentRecord& operator=(const DocumentRecord&) = delete;
};

// A record for a new, empty, temporary document in `folder`, with a name of its own that ends in ".vkjson".
std::shared_ptr<DocumentRecord> CreateTemporaryDocument(const std::string& folder);

}  // namespace zentor
