// Data that this library carries with it. One implementation each in win32/ and posix/.
#pragma once

#include <string_view>

namespace zentor::os {

// The bytes of a resource of the library's own module, by type and name, which compare without regard to case; lives as
// long as the module. Empty when there is none. The module's reference count stays as it is.
std::string_view FindOwnResource(std::string_view type, std::string_view name);

}  // namespace zentor::os
