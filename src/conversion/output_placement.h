// Puts a document where the host wants it.
#pragma once

#include <memory>
#include <string>

#include "files/document_record.h"

namespace zentor {

// Checks that a document may be put at `output`: ZT_FILE_NOT_EXIST (something other than a file is there),
// ZT_FILE_CREATE (the file that is there cannot be written, or is one although the output is to be new),
// ZT_OUTPUT_FOLDER (its folder does not exist). Returns the folder.
std::string CheckOutput(const std::string& output, bool isNew);

// A temporary document beside `output` with the bytes of a file. Codes of CheckOutput, ZT_FILE_OPEN, ZT_FILE_CLOSE,
// ZT_FILE_READ, ZT_PATH_CONVERSION, ZT_TEMP_FILE, ZT_OUT_OF_MEMORY, ZT_FILE_WRITE.
std::shared_ptr<DocumentRecord> CopyBeside(const std::string& from, const std::string& output, bool isNew);

// Puts the temporary document of `record`, which stands beside `output`, at `output`, and takes it back at the end of
// its life unless it is kept. The document must not be open then.
class OutputPlacement {
public:
    // Renames the document, or exchanges it with the file that is there; the record then stands for the output and is
    // no longer temporary. Codes ZT_FILE_CREATE (a file is there although the output is to be new), ZT_TEMP_FILE,
    // ZT_GENERAL, ZT_RENAME.
    OutputPlacement(std::shared_ptr<DocumentRecord> record, const std::string& output, bool isNew);
    ~OutputPlacement();
    OutputPlacement(const OutputPlacement&) = delete;
    OutputPlacement& operator=(const OutputPlacement&) = delete;

    // Deletes what was there before.
    void Keep() noexcept;

private:
    void TakeBack() noexcept;

    std::shared_ptr<DocumentRecord> record_;
    std::string replacedPath_;  // where the file that was there before is now; empty when there was none
    bool isKept_ = false;
};

}  // namespace zentor
