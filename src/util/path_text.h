// Paths as texts: what can be said of them without a look at the file system.
#pragma once

#include <string>

namespace zentor {

// What follows the last "." of the last part of a path, or nothing.
std::string ExtensionOf(const std::string& path);

// A to Z turned to lower case; every other byte stays.
std::string LowerCaseAscii(std::string text);

}  // namespace zentor
