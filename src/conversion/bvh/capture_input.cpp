#include "conversion/bvh/capture_input.h"

#include <algorithm>
#include <cstring>

#include "errors/exception.h"
#include "errors/progress.h"
#include "errors/raise.h"
#include "util/byte_order_mark.h"
#include "zentor/error_codes.h"

namespace zentor {

namespace {

constexpr std::size_t kBufferSize = 4 * CaptureInput::kLookAhead;

FileHandle OpenCapture(const std::string& path) {
    try {
        return File_IO::Open(path, true, Access::kRead);
    } catch (const ns_sensor::ZT_Exception&) {
        throw ZT_PLUGIN::ZT_PluginException(ZT_CAPTURE_OPEN);
    }
}

constexpr bool IsBrace(char c) { return c == '{' || c == '}'; }

// Of the text before the first byte that ends it.
template <class IsEnd>
std::size_t LengthUpTo(std::string_view text, IsEnd&& isEnd) {
    return static_cast<std::size_t>(std::find_if(text.begin(), text.end(), isEnd) - text.begin());
}

}  // namespace

CaptureInput::CaptureInput(const std::string& path)
    : file_(OpenCapture(path)), bytes_(new char[kBufferSize]), next_(bytes_.get()), end_(next_) {
    constexpr double kFramesRead = 0.5;
    std::uint64_t size = 0;
    os::GetFileLength(file_.get(), size);
    BeginStep(0, kFramesRead, size);
    Advance(Rest().size() - WithoutUtf8Mark(Rest()).size());
}

void CaptureInput::Refill() {
    offset_ += next_ - bytes_.get();
    ReportProgress(static_cast<std::uint64_t>(offset_));
    const auto left = static_cast<std::size_t>(end_ - next_);
    std::memmove(bytes_.get(), next_, left);
    std::size_t used = left;
    while (used < kBufferSize && !atEnd_) {
        const std::uint64_t read = File_IO::Read(file_.get(), bytes_.get() + used, kBufferSize - used);
        atEnd_ = read == 0;
        used += read;
    }
    next_ = bytes_.get();
    end_ = next_ + used;
}

bool CaptureInput::SkipAllBlanks() {
    bool lineEnded = false;
    for (;;) {
        const std::string_view rest = Rest();
        std::size_t count = 0;
        while (count < rest.size() && IsBlank(rest[count])) {
            const char c = rest[count++];
            if (IsLineEnd(c)) {
                lineEnded = true;
                if (c != '\n' || !afterReturn_) ++line_;
            }
            afterReturn_ = c == '\r';
        }
        Advance(count);
        if (count < rest.size()) {
            afterReturn_ = false;
            return lineEnded;
        }
        if (rest.empty()) return true;
    }
}

std::string_view CaptureInput::PeekWord() {
    SkipBlanks();
    const std::string_view rest = Rest();
    if (rest.empty()) return rest;
    if (IsBrace(rest.front())) return rest.substr(0, 1);
    const std::size_t length = LengthUpTo(rest, [](char c) { return IsBlank(c) || IsBrace(c) || c == '\0'; });
    if (length >= kLookAhead || (length != rest.size() && rest[length] == '\0')) Refuse();
    return rest.substr(0, length);
}

std::string CaptureInput::TakeName() {
    constexpr auto kEndsName = [](char c) { return IsLineEnd(c) || c == '{'; };
    SkipBlanks();
    std::string_view text = Rest().substr(0, kLookAhead);
    if (text.starts_with('}')) return {};
    text = text.substr(0, LengthUpTo(text, kEndsName));
    while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
    if (text.size() == kLookAhead || text.find('\0') != std::string_view::npos) Refuse();
    std::string name(text);
    Advance(name.size());
    return name;
}

void CaptureInput::Refuse(const InputPlace& place) { Raise({kConversionFailure, place.offset, place.line}); }

bool IsWord(std::string_view word, std::string_view lower) {
    return std::equal(word.begin(), word.end(), lower.begin(), lower.end(), [](char a, char b) {
        return (a >= 'A' && a <= 'Z' ? static_cast<char>(a - 'A' + 'a') : a) == b;
    });
}

}  // namespace zentor
