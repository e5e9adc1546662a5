// What is wrong with the arguments of a command, beyond what the parser of arguments finds.
#pragma once

#include <stdexcept>

namespace zentor_cli {

class WrongUsage : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace zentor_cli
