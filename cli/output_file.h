// Output files that appear whole or not at all.
#pragma once

#include <cstdint>
#include <string>

#include "library.h"

namespace zentor_cli {

// "run.take2.csv" in any folder: "run.take2.vkjson" in the current one.
std::string DefaultOutputName(const std::string& inputPath);

// Throws unless a document may be written to `path`: its folder must exist (error 58), and a file that is there is
// replaced only with `force`.
void CheckOutputPath(Library& library, const std::string& path, bool force);

// Converts the input, or copies a document, to `path`, where it appears whole or not at all, and reads it back unless
// the library's options say otherwise; returns its size in bytes. A document that stands at `path` itself stays; the
// input of a conversion is never overwritten (error 7). For several threads at once.
std::uint64_t SaveDocument(Library& library, const std::string& inputPath, const std::string& path);

// Writes the document to standard output.
void WriteToStandardOutput(Library& library, Stream& stream);

}  // namespace zentor_cli
