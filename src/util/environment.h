// What the process was started with. One implementation each in win32/ and posix/.
#pragma once

#include <string>

namespace zentor::os {

// Stands between the folders of a list in an environment variable: ":" or ";".
extern const char kPathListSeparator;

// The value of an environment variable, UTF-8 where the system has Unicode; empty when there is none. Also empty in a
// process that may do more than the user who started it (setuid, file capabilities): it must not do what that user
// says.
std::string EnvironmentText(const char* name);

// Whether a path leads to the same place whatever the current folder and, on Windows, the current drive are.
bool IsAbsolutePath(const std::string& path);

}  // namespace zentor::os
