// The locale of messages and names.
#pragma once

#include <string>

namespace zentor {

inline constexpr const char* kDefaultLocale = "en_US";

// Such as "de_DE"; "en_US" until one is set. Thread-safe.
std::string Locale();
// Null or empty: the default, which needs no memory.
void SetLocale(const char* locale);

}  // namespace zentor
