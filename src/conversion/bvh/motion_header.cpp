#include "conversion/bvh/motion_header.h"

#include <algorithm>
#include <charconv>
#include <limits>

#include "conversion/bvh/frame_time.h"
#include "errors/exception.h"
#include "util/number_text.h"
#include "zentor/error_codes.h"

namespace zentor {

namespace {

constexpr bool IsUpper(char c) { return c >= 'A' && c <= 'Z'; }
constexpr bool IsLetter(char c) { return IsUpper(c) || (c >= 'a' && c <= 'z'); }

bool BeginsWith(std::string_view word, std::string_view lower) {
    return word.size() >= lower.size() && IsWord(word.substr(0, lower.size()), lower);
}

// Where a label may begin in a word, or npos: at its beginning, after what is no letter, and with a capital
// ("#frames:", "NumFrames:", but not "keyframes:").
std::size_t FindBeginning(std::string_view word, std::string_view lower) {
    for (std::size_t at = 0; at + lower.size() <= word.size(); ++at) {
        const bool begins = at == 0 || !IsLetter(word[at - 1]) || IsUpper(word[at]);
        if (begins && BeginsWith(word.substr(at), lower)) return at;
    }
    return std::string_view::npos;
}

// Whether the next words are these, which may stand together or apart, with a colon after the last. Goes past what was
// right.
bool TakeLabel(CaptureInput& input, std::initializer_list<std::string_view> words) {
    for (const std::string_view lower : words) {
        if (!BeginsWith(input.PeekWord(), lower)) return false;
        input.Advance(lower.size());
    }
    if (!input.PeekWord().starts_with(':')) return false;
    input.Advance(1);
    return true;
}

// Goes past a label and all words before it. A brace is no word: there are joints still, or one is not closed.
void SkipToLabel(CaptureInput& input, std::initializer_list<std::string_view> words) {
    input.SkipBlanks();
    const InputPlace start = input.Here();
    do {
        const std::string_view word = input.PeekWord();
        if (word.empty()) input.Refuse(start);
        if (word == "{" || word == "}") input.Refuse();
        const std::size_t beginning = FindBeginning(word, *words.begin());
        input.Advance(std::min(beginning, word.size()));
    } while (!TakeLabel(input, words));
}

std::uint64_t ReadFrameCount(CaptureInput& input) {
    const std::string_view word = input.PeekWord();
    std::string_view digits = word;
    if (digits.starts_with('+')) digits.remove_prefix(1);
    if (digits.empty() || !std::all_of(digits.begin(), digits.end(), IsDigit)) input.Refuse();
    std::uint64_t count = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), count);
    input.Advance(word.size());
    return error == std::errc() ? count : std::numeric_limits<std::uint64_t>::max();
}

FrameRate ReadFrameRate(CaptureInput& input) {
    FrameRate rate{};
    const bool isMissing = input.SkipBlanks();  // a number of the next line is one of a frame
    const std::string_view word = isMissing ? std::string_view() : input.PeekWord();
    bool isExact = true;
    if (!ParseFrameTime(word, rate, isExact)) {
        throw ZT_PLUGIN::ZT_PluginException(ZT_FRAME_TIME, input.Here().offset, input.Here().line);
    }
    if (!isExact) AddNotice(ZT_NOTICE_FRAME_RATE, input.Here());
    input.Advance(word.size());
    if (!input.SkipBlanks()) input.Refuse();
    return rate;
}

}  // namespace

MotionHeader ReadMotionHeader(CaptureInput& input) {
    const std::string_view word = input.PeekWord();
    if (IsWord(word, "motion")) input.Advance(word.size());  // a label that is not there is missing after it
    SkipToLabel(input, {"frames"});
    const std::uint64_t frames = ReadFrameCount(input);
    SkipToLabel(input, {"frame", "time"});
    return {frames, ReadFrameRate(input)};
}

}  // namespace zentor
