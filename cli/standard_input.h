// Standard input as a file, which the library can map.
#pragma once

#include <string>

namespace zentor_cli {

// A file in the folder for temporary files with everything that standard input has, gone with this object.
class StandardInput {
public:
    // `extension` without a dot. Throws LibraryFailure.
    explicit StandardInput(const std::string& extension);
    ~StandardInput();
    StandardInput(const StandardInput&) = delete;
    StandardInput& operator=(const StandardInput&) = delete;

    const std::string& path() const { return path_; }

private:
    std::string name_;  // which the system has chosen
    std::string path_;
};

}  // namespace zentor_cli
