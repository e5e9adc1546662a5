#include "conversion/bvh/frame_reader.h"

#include <algorithm>

#include "util/short_copy.h"

namespace zentor {

using ZT_PLUGIN::NumberSample;

FrameReader::FrameReader(CaptureInput& input, std::size_t columns, std::uint64_t declared, NumberForm form,
                         LossWatch& watch)
    : input_(input), declared_(declared), form_(form), watch_(watch), numbers_(columns) {
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
    if (frames_ + 1 < declared_ && input_.Rest().empty()) return false;  // the last number may have been cut
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
    if (const PlainDecimal plain = ScanPlainDecimal(from, end, form_); plain.canonicalEnd != nullptr) {
        const std::string_view text(from, static_cast<std::size_t>(plain.canonicalEnd - from));
        CopyShort(out, text);
        number = {plain.Value(), {out, text.size()}, plain.integers};
        stop = plain.end;
    } else {
        double value = 0;
        stop = ParseNumber(rest.data(), end, value);
        if (stop == nullptr || !IsWritable(value, form_)) return false;
        number = ZT_PLUGIN::MakeNumberSample(value, out, form_);
        watch_.CheckSample(value, number.text, static_cast<std::size_t>(stop - rest.data()), input_.Here());
    }
    if (stop != end && !IsBlank(*stop)) return false;
    const auto length = static_cast<std::size_t>(stop - rest.data());
    if (length >= CaptureInput::kLookAhead) input_.Refuse();  // it may go on beyond what can be looked at
    used_ += number.text.size();
    input_.Advance(length);
    return true;
}

}  // namespace zentor
