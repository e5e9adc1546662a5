// Failures as they are told.
#pragma once

#include <string>

#include "commands/commands.h"

namespace zentor_cli {

// "zentor: run.csv:3: a text has ...; --faithful keeps it", "zentor: error 1506: File Cannot be converted. (at byte 9)
// [run.json:1]", or with --json an object, on standard error. `input`: the file that the failure is about, empty for
// none; named where the line in it is known, and where `namesInput`.
void SayFailure(Library& library, const CommonOptions& common, const Report& report, const std::string& input,
                bool namesInput = false);

}  // namespace zentor_cli
