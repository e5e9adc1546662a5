#include "errors/message.h"

#include <charconv>

#include "errors/dictionary/dictionary.h"
#include "util/utf_codec.h"

namespace zentor {

std::string ZT_ErrorParam::Render() const {
    if (kind_ == Kind::kText) return std::string(text_);
    char digits[330];  // a double in fixed notation has up to 309 digits before the point
    std::to_chars_result end{digits, {}};
    if (kind_ == Kind::kSigned) end = std::to_chars(digits, std::end(digits), signed_);
    if (kind_ == Kind::kUnsigned) end = std::to_chars(digits, std::end(digits), unsigned_);
    if (kind_ == Kind::kDouble) end = std::to_chars(digits, std::end(digits), double_, std::chars_format::fixed, 6);
    return std::string(digits, end.ptr);
}

std::string FormMessage(const char* key, const std::array<ZT_ErrorParam, 4>& parameters) {
    std::u16string text = LookUpMessage(key);
    for (std::size_t k = 0; k < parameters.size(); ++k) {
        if (parameters[k].kind() == ZT_ErrorParam::Kind::kEmpty) continue;
        const char16_t placeholder[] = {u'^', static_cast<char16_t>(u'1' + k), 0};
        const std::size_t at = text.find(placeholder);
        if (at != std::u16string::npos) text.replace(at, 2, Utf8ToUtf16(parameters[k].Render()));
    }
    return Utf16ToUtf8(text);
}

}  // namespace zentor
