#include "sentence.h"

#include <algorithm>

#include "line_reader.h"

namespace nmea {

namespace {

bool IsPrintable(char c) { return c >= ' ' && c <= '~'; }
bool IsAddressCharacter(char c) { return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9'); }

// -1 for any other character.
int HexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return -1;
}

bool IsChecksumOf(std::string_view body, std::string_view digits) {
    if (digits.size() != 2) return false;
    unsigned sum = 0;
    for (const char c : body) sum ^= static_cast<unsigned char>(c);
    return HexDigit(digits[0]) == static_cast<int>(sum >> 4) && HexDigit(digits[1]) == static_cast<int>(sum & 15);
}

void PassOverTagBlock(std::string_view& line) {
    if (line.empty() || line.front() != '\\') return;
    const auto end = line.find('\\', 1);
    if (end != std::string_view::npos) line.remove_prefix(end + 1);
}

}  // namespace

SentenceState Sentence::Read(std::string_view line) {
    count_ = 0;
    if (line.size() > LineReader::kMaxLength) return SentenceState::kNone;
    PassOverTagBlock(line);
    while (!line.empty() && line.back() == ' ') line.remove_suffix(1);
    if (line.empty() || (line.front() != '$' && line.front() != '!')) return SentenceState::kNone;
    isEncapsulated_ = line.front() == '!';
    line.remove_prefix(1);
    if (!std::all_of(line.begin(), line.end(), IsPrintable)) return SentenceState::kNone;

    const auto star = line.find('*');
    const std::string_view body = line.substr(0, star);
    for (std::size_t begin = 0; begin <= body.size() && count_ < fields_.size();) {
        const auto comma = std::min(body.find(',', begin), body.size());
        fields_[count_++] = body.substr(begin, comma - begin);
        begin = comma + 1;
    }
    const std::string_view address = Address();
    if (address.size() < 3 || count_ < 2 || !std::all_of(address.begin(), address.end(), IsAddressCharacter)) {
        return SentenceState::kNone;
    }
    if (star == std::string_view::npos) return SentenceState::kUnsummed;
    return IsChecksumOf(body, line.substr(star + 1)) ? SentenceState::kSound : SentenceState::kDamaged;
}

std::string_view Sentence::Talker() const { return Address().substr(0, Address().front() == 'P' ? 1 : 2); }

std::string_view Sentence::Kind() const {
    const bool isStandard = !isEncapsulated_ && Address().size() == 5 && Address().front() != 'P';
    return isStandard ? Address().substr(2) : std::string_view();
}

}  // namespace nmea
