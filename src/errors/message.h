// Message texts: a key's text with its placeholders filled in.
#pragma once

#include <array>
#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>

#include "util/fixed_text.h"

namespace zentor {

// One parameter of a message, or nothing. Texts are UTF-8 and must outlive the forming of the message.
class ZT_ErrorParam {
public:
    enum class Kind { kEmpty, kSigned, kUnsigned, kDouble, kText };

    ZT_ErrorParam() = default;
    ZT_ErrorParam(std::signed_integral auto value) : kind_(Kind::kSigned), signed_(value) {}
    ZT_ErrorParam(std::unsigned_integral auto value) : kind_(Kind::kUnsigned), unsigned_(value) {}
    ZT_ErrorParam(double value) : kind_(Kind::kDouble), double_(value) {}
    ZT_ErrorParam(std::string_view text) : kind_(Kind::kText), text_(text) {}
    ZT_ErrorParam(const std::string& text) : kind_(Kind::kText), text_(text) {}
    ZT_ErrorParam(const char* text) : kind_(Kind::kText), text_(text) {}
    template <std::size_t N>
    ZT_ErrorParam(const FixedText<N>& text) : ZT_ErrorParam(std::string_view(text)) {}

    Kind kind() const { return kind_; }
    // Integers in decimal, doubles with six decimals, texts as they are.
    std::string Render() const;

private:
    Kind kind_ = Kind::kEmpty;
    std::int64_t signed_ = 0;
    std::uint64_t unsigned_ = 0;
    double double_ = 0;
    std::string_view text_;
};

// The text of `key` in which the first "^1" is replaced by the first parameter, and so on up to "^4". Each step
// searches the result of the one before. A placeholder whose parameter is empty stays. Text that is not valid Unicode
// is shown with replacement characters, so that forming a message cannot hide the failure that it reports.
std::string FormMessage(const char* key, const std::array<ZT_ErrorParam, 4>& parameters);

}  // namespace zentor
