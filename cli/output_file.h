// Output files that appear whole or not at all.
#pragma once

#include <string>

#include "library.h"

namespace zentor_cli {

// "run.take2.csv" in any folder: "run.take2.vkjson" in the current one.
std::string DefaultOutputName(const std::string& inputPath);

// Throws unless a document may be written to `path`: its folder must exist (error 58), and a file that is there is
// replaced only with `force`.
void CheckOutputPath(Library& library, const std::string& path, bool force);

// Saves the document beside `path` under another name and puts it in its place. A document that stands at `path` itself
// stays; the input of a conversion is never overwritten (error 7).
void SaveWhole(Library& library, Stream& stream, const std::string& inputPath, const std::string& path, bool force);

// Writes the document to standard output.
void WriteToStandardOutput(Library& library, Stream& stream);

}  // namespace zentor_cli
