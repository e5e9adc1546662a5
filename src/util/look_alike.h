// Names that were probably meant to be others.
#pragma once

#include <string_view>

namespace zentor {

// Whether a name is a known one with a slip of the pen: apart from case, "_", "-" and blanks, it differs by one letter
// that is left out, too many, another or exchanged with the next, for each five letters of the known name, and by no
// less than one. A name looks like itself.
bool LooksLike(std::string_view name, std::string_view known);

}  // namespace zentor
