// A document's file: mapped while it is being opened, read at offsets by the queries.
#pragma once

#include <string>
#include <string_view>

#include "reader/document_bytes.h"
#include "reader/temp_file.h"
#include "util/file_mapper.h"

namespace zentor {

class MappedDocument final : public DocumentBytes {
public:
    // `privateCopy`: the file is copied first, and all that follows is read from the copy, so that nobody's writing to
    // the file matters. Codes ZT_FILE_STAT (its size cannot be read), ZT_FILE_OPEN (it cannot be opened), ZT_GENERAL
    // (it cannot be mapped), ZT_EMPTY_FILE (it is empty); of the copy ZT_TEMP_FOLDER, ZT_TEMP_FILE and ZT_GENERAL.
    MappedDocument(const std::string& path, bool privateCopy);

    // All of them, until the document has been opened.
    std::string_view bytes() const { return file_.bytes(); }
    // What is before this offset is not read again soon and need not stay in memory.
    void Pass(std::size_t offset) const { file_.Pass(offset); }
    void EndOpening() { file_.EndMapping(); }

    // By the size of the file and the times of its changes.
    void CheckUnchanged() const override;
    std::uint64_t Size() const override { return file_.Size(); }
    void Read(std::uint64_t offset, char* to, std::size_t count) const override;

private:
    void Map(const std::string& path);
    void CopyMapped();

    TempFileHandler copy_;  // outlives its mapping
    bool isPrivate_ = false;
    FileMapper file_;
};

}  // namespace zentor
