#include "errors/dictionary.h"

#include "util/utf_codec.h"

namespace zentor {

std::u16string LookUpMessage(std::string_view key) {
    const std::size_t separator = key.find('=');
    if (separator == std::string_view::npos) return {};
    return Utf8ToUtf16(key.substr(separator + 1));
}

}  // namespace zentor
