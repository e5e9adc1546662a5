#include "conversion/bvh/motion.h"

#include <algorithm>
#include <charconv>
#include <limits>

#include "errors/exception.h"
#include "util/short_copy.h"
#include "zentor/error_codes.h"

namespace zentor {

namespace {

using ZT_PLUGIN::NumberSample;
using ZT_PLUGIN::ZT_PluginException;

// Takes the words of a label, which may stand together or apart, with a colon after the last.
void TakeLabel(CaptureInput& input, std::initializer_list<std::string_view> words) {
    for (const std::string_view lower : words) {
        const std::string_view word = input.PeekWord();
        if (word.size() < lower.size() || !IsWord(word.substr(0, lower.size()), lower)) input.Refuse();
        input.Advance(lower.size());
    }
    if (!input.PeekWord().starts_with(':')) input.Refuse();
    input.Advance(1);
}

std::uint64_t ReadFrameCount(CaptureInput& input) {
    std::string_view word = input.PeekWord();
    std::string_view digits = word;
    if (digits.starts_with('+')) digits.remove_prefix(1);
    if (digits.empty() || !std::all_of(digits.begin(), digits.end(), IsDigit)) input.Refuse();
    std::uint64_t count = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), count);
    input.Advance(word.size());
    return error == std::errc() ? count : std::numeric_limits<std::uint64_t>::max();
}

[[noreturn]] void RefuseFrameTime(const CaptureInput& input) {
    throw ZT_PluginException(ZT_FRAME_TIME, input.Here().offset, input.Here().line);
}

// Files give the frame time as a rounded decimal: 0.0166667 is 60 frames a second, though a little less by arithmetic.
FrameRate RateOf(double frameTime) {
    constexpr double kRounding = 1 + 5e-5;
    const auto hundredths = static_cast<std::uint32_t>(100 / frameTime * kRounding);
    switch (hundredths) {
        case 2997:
            return {30000, 1001, false};
        case 5994:
            return {60000, 1001, false};
        default:
            return {hundredths / 100, 1, false};
    }
}

FrameRate ReadFrameRate(CaptureInput& input) {
    constexpr double kShortest = 0.001;
    if (input.SkipBlanks()) RefuseFrameTime(input);  // a number of the next line is one of a frame
    const std::string_view word = input.PeekWord();
    const char* const end = word.data() + word.size();
    double frameTime = 0;
    if (word.empty() || ParseNumber(word.data(), end, frameTime) != end || !(frameTime > kShortest)) {
        RefuseFrameTime(input);
    }
    const FrameRate rate = RateOf(frameTime);
    if (rate.numerator == 0) RefuseFrameTime(input);
    input.Advance(word.size());
    if (!input.SkipBlanks()) input.Refuse();
    return rate;
}

}  // namespace

MotionHeader ReadMotionHeader(CaptureInput& input) {
    const std::string_view word = input.PeekWord();
    if (IsWord(word, "motion")) input.Advance(word.size());
    TakeLabel(input, {"frames"});
    const std::uint64_t frames = ReadFrameCount(input);
    TakeLabel(input, {"frame", "time"});
    return {frames, ReadFrameRate(input)};
}

FrameReader::FrameReader(CaptureInput& input, std::size_t columns, std::uint64_t declared)
    : input_(input), declared_(declared), numbers_(columns) {
    constexpr std::size_t kUsualRoom = 24;
    texts_.resize(columns * kUsualRoom + kPlainNumberRoom);
}

bool FrameReader::Next() {
    used_ = 0;
    for (std::size_t column = 0; column < numbers_.size(); ++column) {
        if (ReadNumber(column)) continue;
        if (frames_ >= declared_ || IsCutNext()) return false;  // what there is of this frame does not count
        input_.Refuse();
    }
    if (numbers_.empty()) {
        if (IsNumberNext()) input_.Refuse();
        return false;
    }
    if (!input_.SkipBlanks()) {
        if (frames_ < declared_ || IsNumberNext()) input_.Refuse();
        return false;
    }
    ++frames_;
    return true;
}

bool FrameReader::IsNumberNext() {
    const std::string_view rest = input_.Rest();
    double number = 0;
    return ParseNumber(rest.data(), rest.data() + rest.size(), number) != nullptr;
}

bool FrameReader::IsCutNext() {
    const std::string_view rest = input_.Rest();
    return rest.empty() || (rest.size() < CaptureInput::kLookAhead && !IsDigit(rest.back()) &&
                            rest.find_first_not_of("+-.0123456789Ee") == std::string_view::npos);
}

void FrameReader::MakeRoom(std::size_t column) {
    std::vector<char> larger(texts_.size() * 2);
    std::copy(texts_.begin(), texts_.end(), larger.begin());
    for (std::size_t k = 0; k < column; ++k) {
        const std::string_view text = numbers_[k].text;
        numbers_[k].text = {larger.data() + (text.data() - texts_.data()), text.size()};
    }
    texts_ = std::move(larger);
}

// False, at the place, when there is no number before the next blank.
bool FrameReader::ReadNumber(std::size_t column) {
    input_.SkipBlanks();
    if (texts_.size() - used_ < kPlainNumberRoom) MakeRoom(column);
    const std::string_view rest = input_.Rest();
    if (rest.starts_with("+-")) return false;
    const char* const end = rest.data() + rest.size();
    const char* const from = rest.starts_with('+') ? rest.data() + 1 : rest.data();
    char* const out = texts_.data() + used_;
    NumberSample& number = numbers_[column];
    const char* stop = nullptr;
    if (const PlainDecimal plain = ScanPlainDecimal(from, end); plain.canonicalEnd != nullptr) {
        const std::string_view text(from, static_cast<std::size_t>(plain.canonicalEnd - from));
        CopyShort(out, text);
        number = {plain.Value(), {out, text.size()}, plain.integers};
        stop = plain.end;
    } else {
        double value = 0;
        stop = ParseNumber(rest.data(), end, value);
        if (stop == nullptr || !IsWritable(value)) return false;
        number = ZT_PLUGIN::MakeNumberSample(value, out);
    }
    if (stop != end && !IsBlank(*stop)) return false;
    const auto length = static_cast<std::size_t>(stop - rest.data());
    if (length >= CaptureInput::kLookAhead) input_.Refuse();  // it may go on beyond what can be looked at
    used_ += number.text.size();
    input_.Advance(length);
    return true;
}

}  // namespace zentor
