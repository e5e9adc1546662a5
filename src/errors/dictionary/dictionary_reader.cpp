#include "errors/dictionary/dictionary_reader.h"

#include "util/byte_order_mark.h"
#include "util/utf_codec.h"

namespace lexkit_private {

namespace {

// "key=text" between quotes; false when the line is something else.
bool ParseLine(std::u16string_view line, DictionaryEntry& entry) {
    const std::size_t separator = line.find(u'=');
    if (!line.starts_with(u'"') || separator < 2 || separator == std::u16string_view::npos) return false;
    entry.key = zentor::Utf16ToUtf8(line.substr(1, separator - 1));
    entry.text.clear();
    std::size_t at = separator + 1;
    for (; at < line.size() && line[at] != u'"'; ++at) {
        const bool isEscape = line[at] == u'\\' && at + 1 < line.size() && line[at + 1] == u'"';
        if (isEscape) ++at;
        entry.text += line[at];
    }
    return at + 1 == line.size() && !entry.text.empty();  // the quote that ends it is the last of the line
}

}  // namespace

bool DictionaryReader::ReadLine(std::u16string& line) {
    line.clear();
    char16_t unit = 0;
    while (ReadUnit(unit)) {
        const bool isSecondHalf = unit == u'\n' && isAfterReturn_;
        isAfterReturn_ = unit == u'\r';
        if (isSecondHalf) continue;
        if (unit == u'\r' || unit == u'\n') return true;
        line += unit;
    }
    return !line.empty();
}

bool DictionaryReader::Next(DictionaryEntry& entry) {
    std::u16string line;
    while (ReadLine(line)) {
        if (ParseLine(line, entry)) return true;
    }
    return false;
}

bool UnicodeReader::ReadUnit(char16_t& unit) {
    if (bytes_.size() < 2) return false;
    unit = Decode(static_cast<unsigned char>(bytes_[0]), static_cast<unsigned char>(bytes_[1]));
    bytes_.remove_prefix(2);
    return true;
}

char16_t UnicodeReader::Decode(unsigned char first, unsigned char second) const {
    return static_cast<char16_t>(first | (second << 8));
}

char16_t ByteSwapUnicodeReader::Decode(unsigned char first, unsigned char second) const {
    return static_cast<char16_t>((first << 8) | second);
}

MultibyteReader::MultibyteReader(std::string_view bytes) : units_(zentor::Utf8ToUtf16(bytes)) {}

bool MultibyteReader::ReadUnit(char16_t& unit) {
    if (next_ == units_.size()) return false;
    unit = units_[next_++];
    return true;
}

std::unique_ptr<DictionaryReader> MakeDictionaryReader(std::string_view bytes) {
    constexpr std::string_view kBinary[] = {"Wexstring Binary Format", "BUFF", "FFUB"};
    for (const std::string_view mark : kBinary) {
        if (bytes.starts_with(mark)) return nullptr;
    }
    using zentor::kUtf16BigEndianMark;
    using zentor::kUtf16LittleEndianMark;
    if (bytes.starts_with(kUtf16LittleEndianMark)) {
        return std::make_unique<UnicodeReader>(bytes.substr(kUtf16LittleEndianMark.size()));
    }
    if (bytes.starts_with(kUtf16BigEndianMark)) {
        return std::make_unique<ByteSwapUnicodeReader>(bytes.substr(kUtf16BigEndianMark.size()));
    }
    return std::make_unique<MultibyteReader>(zentor::WithoutUtf8Mark(bytes));
}

std::string WithoutStrayBytes(std::string_view bytes) {
    std::string result;
    result.reserve(bytes.size());
    for (const char byte : bytes) {
        if (byte == '\n') {
            if (result.empty() || result.back() != '\r') return std::string(bytes);
            result.back() = '\n';
        } else {
            result += byte;
        }
    }
    return result;
}

}  // namespace lexkit_private
