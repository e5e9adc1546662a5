// What a failure was for which a host gets but a code: for authors of plug-ins, who ask for it.
#pragma once

#include <string_view>

namespace zentor {

// A line on standard error where the environment variable ZENTOR_TRACE is 1, else nothing. Control characters come as
// blanks, what is no UTF-8 as replacement characters, long texts cut.
void Trace(std::string_view text) noexcept;

}  // namespace zentor
