// Copies of documents.
#pragma once

#include <string>

namespace zentor {

// Copies a file's content to `to`, creating that or replacing its content. When the copy fails, a file that was there
// before is left empty, and a new one is removed. Codes 4 (`to` is not a file), 6, 7, 8, 11, 12, 13, 34, 55.
void CopyDocument(const std::string& from, const std::string& to);

}  // namespace zentor
