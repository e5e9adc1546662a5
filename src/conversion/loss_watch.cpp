#include "conversion/loss_watch.h"

#include <charconv>
#include <cmath>

#include "util/line_count.h"

namespace zentor {

LossWatch::LossWatch(const ConversionInfo& info, std::string_view input, std::int64_t start)
    : input_(input),
      start_(start),
      form_(info.form),
      isStrict_(info.isStrict),
      isOn_(info.isStrict || AreNoticesWanted()) {}

InputPlace LossWatch::PlaceAt(std::size_t offset) const {
    const std::int64_t line = LineAt(input_, offset);
    return {start_ < 0 ? -1 : start_ + static_cast<std::int64_t>(offset), line};
}

bool LossWatch::FindLoss(std::string_view text, Loss& loss) const {
    std::size_t at = FindUnplain(text);
    if (at == text.size()) return false;
    while (at < text.size()) {
        const char c = text[at];
        if (static_cast<unsigned char>(c) >= 0x80) {
            const std::size_t length = Utf8Length(text.substr(at));
            if (length == 0) {
                loss = form_.IsFaithful() ? Loss{ZT_NOTICE_READ_AS_WINDOWS, nullptr}
                                          : Loss{ZT_NOTICE_NOT_UTF8, &kBytesInText};
                return true;
            }
            at += length;
        } else if (!form_.IsFaithful()) {
            loss = {ZT_NOTICE_TEXTS, c == '"'    ? &kQuoteInText
                                     : c == '\\' ? &kBackslashInText
                                                 : &kControlCharacterInText};
            return true;
        } else {
            ++at;
        }
        at += FindUnplain(text.substr(at));
    }
    return false;
}

bool LossWatch::FindLoss(double value, std::string_view text, Loss& loss) {
    double back = 0;
    std::from_chars(text.data(), text.data() + text.size(), back);
    if (back == value) return false;
    constexpr double kOfRounding = 1e-14;  // relative; a lost zero of an exponent is a factor of ten and more
    const bool isRounded =
        text.find('e') == std::string_view::npos || std::abs(back - value) < std::abs(value) * kOfRounding;
    loss = isRounded ? Loss{ZT_NOTICE_ROUNDED, nullptr} : Loss{ZT_NOTICE_EXPONENTS, &kExponent};
    return true;
}

bool LossWatch::IsFirst(ZT_NoticeKind kind, std::size_t offset) const {
    const Notices* const notices = Notices::Current();
    return notices == nullptr || notices->IsFirst(kind, start_ + static_cast<std::int64_t>(offset));
}

void LossWatch::Tell(const Loss& loss, const InputPlace& place) const {
    if (isStrict_ && loss.refusal != nullptr) RefuseInput(*loss.refusal, place);
    AddNotice(loss.notice, place);
}

}  // namespace zentor
