// Nodes as people name them.
#pragma once

#include <string>

#include "document.h"

namespace zentor_cli {

// The data path of a node: the path itself where it begins with a bracket, else that of the node with this display
// name, after those of the groups that it is in: Hips/ROTATION. Where no node is called so, match names are looked at.
// Throws LibraryFailure, with what there is, for a name that no node has or several have.
std::string DataPathOf(const Document& document, const std::string& given);

}  // namespace zentor_cli
