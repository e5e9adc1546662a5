// Which documents are open.
#pragma once

#include <string>

namespace zentor {

// An open document is mapped; nothing may write to its file.
class OpenDocuments {
public:
    // Whether the file at an absolute path is an open document, or is about to be one.
    virtual bool IsOpen(const std::string& path) = 0;

protected:
    ~OpenDocuments() = default;
};

}  // namespace zentor
