// The file that a document is written to.
#pragma once

#include <cstdint>
#include <string>

#include "files/file_io.h"

namespace zentor {

// Creates the file with the first write and keeps it open until Close. Every failure closes the file, deletes it and
// comes out as a ZT_PluginException: the code of the file operation + 1000, ZT_CONVERTER_OUT_OF_MEMORY for want of
// memory or disk, ZT_CONVERTER_UNKNOWN.
class DocumentFile {
public:
    explicit DocumentFile(std::string path) : path_(std::move(path)) {}
    // A file that was not closed is not a document: it is deleted.
    ~DocumentFile();
    DocumentFile(const DocumentFile&) = delete;
    DocumentFile& operator=(const DocumentFile&) = delete;

    void Write(const char* bytes, std::size_t count);
    // Cuts the file; writing goes on from there.
    void CutTo(std::uint64_t length);
    void Close();
    // Gives the document up.
    void Abandon() noexcept;

private:
    template <class Step>
    void Guarded(Step&& step);

    std::string path_;
    FileHandle file_ = kNoFile;
    bool isUnfinished_ = false;  // the file is there and is no document yet
};

}  // namespace zentor
