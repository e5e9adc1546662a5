#include "table_source.h"

#include <algorithm>
#include <cstring>
#include <filesystem>

#include <zentor/plugin/converter.h>
#include <zentor/plugin/json_text.h>

namespace series {

namespace {

constexpr std::size_t kBlock = 1 << 16;
constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kUtf16LeMark = "\xFF\xFE";
constexpr std::string_view kUtf16BeMark = "\xFE\xFF";
constexpr std::uint32_t kReplacement = 0xFFFD;

bool BeginsWith(std::string_view text, std::string_view beginning) {
    return text.substr(0, beginning.size()) == beginning;
}

// But for a character that the end of the head may have cut.
bool IsUtf8(std::string_view head, bool isCut) {
    constexpr std::size_t kLongestCharacter = 4;
    const std::string text(head);
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = ZT_PLUGIN::Utf8Length(text, at);
        if (length == 0) return isCut && text.size() - at < kLongestCharacter;
        at += length;
    }
    return true;
}

bool IsHighSurrogate(std::uint32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool IsLowSurrogate(std::uint32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

}  // namespace

const char* NameOf(Encoding encoding) {
    constexpr const char* kNames[] = {"UTF-8", "UTF-16LE", "UTF-16BE", "Windows-1252"};
    return kNames[static_cast<std::size_t>(encoding)];
}

Encoding DetectEncoding(std::string_view head, bool isCut) {
    if (BeginsWith(head, kUtf8Mark)) return Encoding::kUtf8;
    if (BeginsWith(head, kUtf16LeMark)) return Encoding::kUtf16Le;
    if (BeginsWith(head, kUtf16BeMark)) return Encoding::kUtf16Be;
    std::size_t zeros[2] = {};
    for (std::size_t at = 0; at < head.size(); ++at) zeros[at % 2] += head[at] == '\0' ? 1 : 0;
    const std::size_t units = head.size() / 2;
    const std::size_t most = units * 3 / 4;  // a table is mostly digits, delimiters and Latin letters
    if (units != 0 && zeros[1] > most && zeros[0] == 0) return Encoding::kUtf16Le;
    if (units != 0 && zeros[0] > most && zeros[1] == 0) return Encoding::kUtf16Be;
    return IsUtf8(head, isCut) ? Encoding::kUtf8 : Encoding::kWindows1252;
}

FileSource::FileSource(const std::string& path, Encoding encoding) : encoding_(encoding) {
    file_.pubsetbuf(nullptr, 0);  // the readers' buffers are enough
    if (file_.open(std::filesystem::u8path(path), std::ios::in | std::ios::binary) == nullptr) {
        throw ZT_PLUGIN::ZT_PluginException(ZT_CAPTURE_OPEN);
    }
    if (encoding_ != Encoding::kUtf8) {
        raw_.resize(kBlock);
        return;
    }
    char mark[3] = {};
    const bool hasMark =
        ReadBytes(mark, sizeof mark) == sizeof mark && std::string_view(mark, sizeof mark) == kUtf8Mark;
    if (hasMark) {
        firstByte_ = sizeof mark;
    } else {
        file_.pubseekpos(0);
    }
}

std::size_t FileSource::ReadBytes(char* room, std::size_t size) {
    std::size_t count = 0;
    while (count != size) {
        const auto got = file_.sgetn(room + count, static_cast<std::streamsize>(size - count));
        if (got <= 0) break;
        count += static_cast<std::size_t>(got);
    }
    return count;
}

std::size_t FileSource::Read(char* room, std::size_t size) {
    if (encoding_ == Encoding::kUtf8) return ReadBytes(room, size);
    std::size_t count = 0;
    while (count != size) {
        if (taken_ == decoded_.size()) Decode();
        if (decoded_.empty()) break;
        const std::size_t part = std::min(size - count, decoded_.size() - taken_);
        std::memcpy(room + count, decoded_.data() + taken_, part);
        count += part;
        taken_ += part;
    }
    return count;
}

// The next block; empty at the end.
void FileSource::Decode() {
    decoded_.clear();
    taken_ = 0;
    const std::size_t size = ReadBytes(raw_.data(), raw_.size());
    if (encoding_ == Encoding::kWindows1252) {
        for (std::size_t at = 0; at < size; ++at) {
            ZT_PLUGIN::AppendWindows1252(decoded_, static_cast<unsigned char>(raw_[at]));
        }
        return;
    }
    for (std::size_t at = 0; at < size; ++at) {
        const int byte = static_cast<unsigned char>(raw_[at]);
        if (odd_ < 0) {
            odd_ = byte;
            continue;
        }
        const int unit = encoding_ == Encoding::kUtf16Le ? byte << 8 | odd_ : odd_ << 8 | byte;
        odd_ = -1;
        DecodeUnit(static_cast<std::uint32_t>(unit));
    }
    if (size == 0 && (high_ != 0 || odd_ >= 0)) {  // cut short
        ZT_PLUGIN::AppendUtf8(decoded_, kReplacement);
        high_ = 0;
        odd_ = -1;
    } else if (size != 0 && decoded_.empty()) {
        Decode();  // a mark and no more
    }
}

void FileSource::DecodeUnit(std::uint32_t unit) {
    const bool isMark = isAtBeginning_ && unit == 0xFEFF;
    isAtBeginning_ = false;
    if (isMark) return;
    if (high_ != 0) {
        const std::uint32_t high = high_;
        high_ = 0;
        if (IsLowSurrogate(unit)) {
            ZT_PLUGIN::AppendUtf8(decoded_, 0x10000 + ((high - 0xD800) << 10) + (unit - 0xDC00));
            return;
        }
        ZT_PLUGIN::AppendUtf8(decoded_, kReplacement);
    }
    if (IsHighSurrogate(unit)) {
        high_ = unit;
    } else {
        ZT_PLUGIN::AppendUtf8(decoded_, IsLowSurrogate(unit) ? kReplacement : unit);
    }
}

std::size_t MemorySource::Read(char* room, std::size_t size) {
    const std::size_t count = text_.copy(room, size);
    text_.remove_prefix(count);
    return count;
}

}  // namespace series
