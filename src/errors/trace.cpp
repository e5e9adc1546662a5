#include "errors/trace.h"

#include <algorithm>
#include <string>

#include "errors/raise.h"
#include "util/console.h"
#include "util/environment.h"
#include "util/utf_codec.h"

namespace zentor {

void Trace(std::string_view text) noexcept {
    try {
        if (text.empty() || os::EnvironmentText("ZENTOR_TRACE") != "1") return;
        std::string line = Utf16ToUtf8(Utf8ToUtf16(Excerpt(text)));
        std::replace_if(
            line.begin(), line.end(), [](char c) { return (c >= 0 && c < ' ') || c == 0x7F; }, ' ');
        os::WriteError("zentor: trace: " + line + "\n");
    } catch (...) {
        // Without memory for the line there is none.
    }
}

}  // namespace zentor
