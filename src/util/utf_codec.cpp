#include "util/utf_codec.h"

namespace zentor {

namespace {

// Length of the sequence that `lead` begins, and the smallest second byte that keeps it canonical; 0 for a bad lead.
struct SequenceRule {
    int length;
    unsigned char secondMin;
    unsigned char secondMax;
};

SequenceRule RuleFor(unsigned char lead) {
    if (lead >= 0xC2 && lead <= 0xDF) return {2, 0x80, 0xBF};
    if (lead == 0xE0) return {3, 0xA0, 0xBF};
    if (lead == 0xED) return {3, 0x80, 0x9F};
    if (lead >= 0xE1 && lead <= 0xEF) return {3, 0x80, 0xBF};
    if (lead == 0xF0) return {4, 0x90, 0xBF};
    if (lead >= 0xF1 && lead <= 0xF3) return {4, 0x80, 0xBF};
    if (lead == 0xF4) return {4, 0x80, 0x8F};
    return {0, 0, 0};
}

// Decodes the sequence at `text[at]` (not ASCII) and moves `at` past it, or past its longest valid beginning.
std::uint32_t DecodeSequence(std::string_view text, std::size_t& at) {
    const auto lead = static_cast<unsigned char>(text[at++]);
    const SequenceRule rule = RuleFor(lead);
    if (rule.length == 0) return kReplacementCharacter;
    std::uint32_t codePoint = lead & (0xFFU >> (rule.length + 1));
    for (int k = 1; k < rule.length; ++k) {
        if (at == text.size()) return kReplacementCharacter;
        const auto next = static_cast<unsigned char>(text[at]);
        const unsigned char low = k == 1 ? rule.secondMin : 0x80;
        const unsigned char high = k == 1 ? rule.secondMax : 0xBF;
        if (next < low || next > high) return kReplacementCharacter;
        codePoint = (codePoint << 6) | (next & 0x3FU);
        ++at;
    }
    return codePoint;
}

void AppendUtf16(std::u16string& text, std::uint32_t codePoint) {
    if (codePoint < 0x10000) {
        text.push_back(static_cast<char16_t>(codePoint));
        return;
    }
    text.push_back(static_cast<char16_t>(0xD800 + ((codePoint - 0x10000) >> 10)));
    text.push_back(static_cast<char16_t>(0xDC00 + ((codePoint - 0x10000) & 0x3FF)));
}

}  // namespace

std::size_t EncodeUtf8(std::uint32_t codePoint, char* out) {
    if (codePoint < 0x80) {
        out[0] = static_cast<char>(codePoint);
        return 1;
    }
    const std::size_t length = codePoint < 0x800 ? 2 : codePoint < 0x10000 ? 3 : 4;
    for (std::size_t k = length - 1; k > 0; --k) {
        out[k] = static_cast<char>(0x80 | (codePoint & 0x3F));
        codePoint >>= 6;
    }
    constexpr unsigned char kLeads[] = {0, 0, 0xC0, 0xE0, 0xF0};
    out[0] = static_cast<char>(kLeads[length] | codePoint);
    return length;
}

void AppendUtf8(std::string& text, std::uint32_t codePoint) {
    char bytes[4];
    text.append(bytes, EncodeUtf8(codePoint, bytes));
}

std::u16string Utf8ToUtf16(std::string_view text) {
    std::u16string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const auto byte = static_cast<unsigned char>(text[at]);
        if (byte < 0x80) {
            result.push_back(byte);
            ++at;
        } else {
            AppendUtf16(result, DecodeSequence(text, at));
        }
    }
    return result;
}

std::string Utf16ToUtf8(std::u16string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        std::uint32_t codePoint = text[at];
        if (IsHighSurrogate(codePoint) && at + 1 < text.size() && IsLowSurrogate(text[at + 1])) {
            codePoint = CombineSurrogates(codePoint, text[++at]);
        } else if (IsHighSurrogate(codePoint) || IsLowSurrogate(codePoint)) {
            codePoint = kReplacementCharacter;
        }
        AppendUtf8(result, codePoint);
    }
    return result;
}

}  // namespace zentor
