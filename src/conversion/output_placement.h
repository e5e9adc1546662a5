// Puts a converted document where the host wants it.
#pragma once

#include <memory>
#include <string>

#include "conversion/document_record.h"

namespace zentor {

// Puts the temporary document of `record` at `output`, and takes it back at the end of its life unless it is kept.
class OutputPlacement {
public:
    // Renames the document, or exchanges it with the file that is there; the record then stands for the output and is
    // no longer temporary. Codes 4 (something other than a file is there), 15, 21, 22.
    OutputPlacement(std::shared_ptr<DocumentRecord> record, const std::string& output);
    ~OutputPlacement();
    OutputPlacement(const OutputPlacement&) = delete;
    OutputPlacement& operator=(const OutputPlacement&) = delete;

    // Deletes what was there before.
    void Keep() noexcept;

private:
    std::shared_ptr<DocumentRecord> record_;
    std::string temporaryPath_;
    bool replacesFile_;
    bool isKept_ = false;
};

// Checks that an output can be written: code 58 when its folder does not exist. Returns the folder.
std::string CheckOutputFolder(const std::string& output);

}  // namespace zentor
