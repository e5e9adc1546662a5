// What goes where, before anything is converted.
#pragma once

#include <string>
#include <vector>

#include "commands/commands.h"

namespace zentor_cli {

struct PlannedConversion {
    std::string input;
    std::string output;  // "-": standard output
};

// Throws WrongUsage: several inputs and no folder for them, two that would become the same file, standard input without
// a format or an output.
std::vector<PlannedConversion> PlanConversions(const ConvertOptions& options);

}  // namespace zentor_cli
