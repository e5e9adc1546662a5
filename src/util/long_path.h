// Windows paths in full: absolute, and prefixed, which lifts the limit of 260 characters. Made from their text alone:
// the system's own function would take names such as "aux.csv" and "COM1", in any folder, for devices.
#pragma once

#include <functional>
#include <string>

namespace zentor {

// The absolute path of the process's current folder, or of that on a drive ("C:"); empty where there is none.
using CurrentFolder = std::function<std::string(const std::string& drive)>;

// The absolute form of a path: "/" turned into "\", relative to the current folder, to one of a drive ("C:x") or to
// where the current one begins ("\x"); empty names, "." and ".." are resolved, the latter not beyond the drive or the
// network's share. A separator at the end stays. A path that has the prefix "\\?\", or names a device ("\\.\"), is only
// given its separators. Empty when the path is empty, or its current folder is not known.
std::string AbsoluteWindowsPath(std::string path, const CurrentFolder& currentFolder);

// Turns "/" into "\" and puts "\\?\" before an absolute path, "\\?\UNC\" in place of the "\\" of a network path.
// A path that has the prefix, or names a device ("\\.\"), stays as it is.
std::string LongPathForm(std::string path);

}  // namespace zentor
