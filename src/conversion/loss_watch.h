// Watches a conversion for what the document cannot give back as it went in: refused for a strict host, else counted
// for the host's notices.
#pragma once

#include <string_view>

#include "conversion/converter_base.h"
#include "errors/notices.h"
#include "errors/raise.h"

namespace zentor {

class LossWatch {
public:
    // `input`: the text of the input, in which places are found, at `start` in the file; -1 when it is another text
    // than the file's. An empty one: places are given.
    LossWatch(const ConversionInfo& info, std::string_view input, std::int64_t start);

    // Whether anybody wants to know; otherwise the checks do nothing.
    bool IsOn() const { return isOn_; }
    // A text of the input that goes into the document; it stands at an offset of the text. ZT_CONVERSION.
    void CheckText(std::string_view text, std::size_t offset) {
        Loss loss{};
        if (isOn_ && FindLoss(text, loss)) Tell(loss, offset);
    }
    void CheckText(std::string_view text, const InputPlace& place) {
        Loss loss{};
        if (isOn_ && FindLoss(text, loss)) Tell(loss, place);
    }
    // Something that the conversion has changed, at an offset of the text.
    void Count(ZT_NoticeKind kind, std::size_t offset) const {
        if (isOn_) AddNotice(kind, IsFirst(kind, offset) ? PlaceAt(offset) : InputPlace());
    }
    // The text of a number for the document. `length`: of its text in the input. ZT_CONVERSION.
    NumberText Format(double value, std::size_t length, std::size_t offset) {
        const NumberText text = FormatNumber(value, form_.numbers);
        Loss loss{};
        if (isOn_ && MayLose(value, length) && FindLoss(value, text.view(), loss)) Tell(loss, offset);
        return text;
    }
    // The same, of a number that others format; and of one that they have formatted as `text`.
    void CheckNumber(double value, std::size_t length, const InputPlace& place) {
        if (isOn_ && MayLose(value, length))
            CheckSample(value, FormatNumber(value, form_.numbers).view(), length, place);
    }
    void CheckSample(double value, std::string_view text, std::size_t length, const InputPlace& place) {
        Loss loss{};
        if (isOn_ && MayLose(value, length) && FindLoss(value, text, loss)) Tell(loss, place);
    }

    InputPlace PlaceAt(std::size_t offset) const;

private:
    // What cannot be held, as a notice and as a refusal.
    struct Loss {
        ZT_NoticeKind notice;
        const ErrorEntry* refusal;  // null: no reason to refuse
    };
    // False when there is none.
    bool FindLoss(std::string_view text, Loss& loss) const;
    static bool FindLoss(double value, std::string_view text, Loss& loss);
    void Tell(const Loss& loss, const InputPlace& place) const;
    // The place is worked out only where it is asked for.
    void Tell(const Loss& loss, std::size_t offset) const {
        const bool isRefused = isStrict_ && loss.refusal != nullptr;
        Tell(loss, isRefused || IsFirst(loss.notice, offset) ? PlaceAt(offset) : InputPlace());
    }
    bool IsFirst(ZT_NoticeKind kind, std::size_t offset) const;
    // Whether 16 digits may not be enough, or there is an exponent: for nearly all numbers that is seen at once.
    bool MayLose(double value, std::size_t length) const {
        constexpr std::size_t kSurelyExact = 16;
        if (form_.IsFaithful()) return false;
        const double magnitude = value < 0 ? -value : value;
        return length > kSurelyExact || (magnitude != 0 && (magnitude < 1e-4 || magnitude >= 1e16));
    }

    std::string_view input_;
    std::int64_t start_;
    ContentForm form_;
    bool isStrict_;
    bool isOn_;
};

}  // namespace zentor
