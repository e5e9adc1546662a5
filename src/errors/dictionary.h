// The text of a message key.
#pragma once

#include <string>
#include <string_view>

namespace zentor {

// The English text that the key carries after its first "="; empty when it has none.
std::u16string LookUpMessage(std::string_view key);

}  // namespace zentor
