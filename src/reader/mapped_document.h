// A document's bytes, mapped.
#pragma once

#include <string>
#include <string_view>

#include "util/file_mapper.h"

namespace zentor {

class MappedDocument {
public:
    // Codes 5 (its size cannot be read), 6 (it cannot be opened), 21 (it cannot be mapped), 54 (it is empty).
    explicit MappedDocument(const std::string& path);

    std::string_view bytes() const { return file_.bytes(); }
    // Code 5 when the file has become shorter, where the system allows that.
    void CheckLength() const;

private:
    FileMapper file_;
};

}  // namespace zentor
