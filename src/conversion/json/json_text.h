// A JSON file that has been parsed: its text, which iterators walk.
//
// No value is kept in memory: it would take many times the bytes of a short number's text. The text is known to be
// JSON, so that finding a value again in it costs little.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "conversion/json/json_iterator.h"
#include "util/file_mapper.h"

namespace zentor {

class JsonText {
public:
    // Codes ZT_FILE_STAT and ZT_GENERAL when the file cannot be read, ZT_FILE_OPEN when it cannot be opened;
    // ZT_CONVERSION, with the byte offset and the line from 1 on, when it is empty or FindJsonFault finds something.
    JsonText(const std::string& path, NumberForm form);
    JsonText(const JsonText&) = delete;
    JsonText& operator=(const JsonText&) = delete;

    // Over the top-level value. Borrows this text.
    std::shared_ptr<JsonIterator> MakeIterator();

    // After a UTF-8 byte-order mark.
    std::string_view view() const { return text_; }
    std::size_t MarkSize() const { return file_.bytes().size() - text_.size(); }
    // Fails with ZT_CONVERSION at an offset in view().
    [[noreturn]] void Refuse(std::size_t offset) const;

    // The object or array that an iterator has walked to its end last, for the iterator above it.
    struct Walked {
        std::size_t begin = 0;
        std::size_t end = 0;
    };
    Walked walked;

private:
    FileMapper file_;
    std::string_view text_;
};

}  // namespace zentor
