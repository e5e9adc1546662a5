// A temporary file of the reader, gone with its owner.
#pragma once

#include <string>
#include <string_view>

#include "files/file_io.h"

namespace zentor {

class TempFileHandler {
public:
    TempFileHandler() = default;
    ~TempFileHandler() { Discard(); }
    TempFileHandler(const TempFileHandler&) = delete;
    TempFileHandler& operator=(const TempFileHandler&) = delete;

    // Creates the file, empty and open for writing. Codes ZT_TEMP_FOLDER, ZT_TEMP_FILE.
    void Create();
    const std::string& Path() const { return path_; }
    // Deletes the file as soon as possible: where the system allows it, its bytes stay for who has it open, and nothing
    // stays behind however the process ends.
    void DeleteName() noexcept;
    // Code ZT_GENERAL.
    void Write(std::string_view bytes);
    // Closes the file; it stays until the handler goes. Code ZT_GENERAL.
    void Close();

private:
    void Discard() noexcept;

    std::string path_;
    FileHandle file_ = kNoFile;
};

}  // namespace zentor
