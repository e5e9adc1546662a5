// The commands. Each returns nothing and throws LibraryFailure.
#pragma once

#include <string>

#include "library.h"

namespace zentor_cli {

// What stands before or after every command.
struct CommonOptions {
    bool json = false;
    bool quiet = false;
    std::string locale = "en_US";
};

struct ConvertOptions {
    std::string input;
    std::string output;  // empty: the input's name with ".vkjson", in the current folder; "-": standard output
    bool force = false;
    bool noValidate = false;
};

void RunFormats(Library& library, const CommonOptions& common);
void RunConvert(Library& library, const CommonOptions& common, const ConvertOptions& options);

}  // namespace zentor_cli
