// Copies of documents.
#pragma once

#include <memory>
#include <string>

#include "files/placed_file.h"

namespace zentor {

// Copies a file's content to `to`, creating that or replacing its content. When the copy fails, a file that was there
// before is left empty, and a new one is removed. Codes ZT_FILE_NOT_EXIST (`to` is not a file), ZT_FILE_OPEN,
// ZT_FILE_CREATE, ZT_FILE_CLOSE, ZT_FILE_READ, ZT_PATH_CONVERSION, ZT_FILE_PERMISSION, ZT_OUT_OF_MEMORY, ZT_FILE_WRITE.
void CopyDocument(const std::string& from, const std::string& to);

// A file beside `target`, to be placed there, with the bytes of `from`. Codes of PlacedFile and CopyDocument.
std::unique_ptr<PlacedFile> CopyBeside(const std::string& from, const std::string& target, bool isNew);

}  // namespace zentor
