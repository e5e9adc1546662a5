// The prefixed form of Windows paths, which lifts the limit of 260 characters.
#pragma once

#include <string>

namespace zentor {

// Turns "/" into "\" and puts "\\?\" before an absolute path, "\\?\UNC\" in place of the "\\" of a network path.
// A path that has the prefix, or names a device ("\\.\"), stays as it is.
std::string LongPathForm(std::string path);

}  // namespace zentor
