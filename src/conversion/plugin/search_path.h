// Where plug-ins are looked for.
#pragma once

#include <string>
#include <vector>

namespace ZT_PLUGIN {

// Names more folders: with ":" between them, ";" on Windows.
inline constexpr const char* kSearchPathVariable = "ZENTOR_PLUGIN_PATH";

// The folders of the environment variable, as they are given there but for empty ones, and after them the folder
// `zentor-plugins` beside the library: so that a module can be tried in place of one that is installed.
std::vector<std::string> SearchPath();

}  // namespace ZT_PLUGIN
