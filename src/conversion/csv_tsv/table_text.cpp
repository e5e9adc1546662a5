#include "conversion/csv_tsv/table_text.h"

#include "util/byte_order_mark.h"
#include "util/utf_codec.h"

namespace zentor {

namespace {

constexpr std::uint32_t kMark = 0xFEFF;
constexpr std::uint32_t kSwappedMark = 0xFFFE;

// Reads units and skips marks.
class UnitReader {
public:
    explicit UnitReader(std::string_view bytes) : bytes_(bytes) {}

    bool Next(std::uint32_t& unit) {
        while (at_ + 1 < bytes_.size()) {
            const auto low = static_cast<unsigned char>(bytes_[at_]);
            const auto high = static_cast<unsigned char>(bytes_[at_ + 1]);
            at_ += 2;
            unit = static_cast<std::uint32_t>(low | (high << 8));
            if (unit != kMark && unit != kSwappedMark) return true;
        }
        return false;
    }

private:
    std::string_view bytes_;
    std::size_t at_ = 0;
};

}  // namespace

ByteOrderMark FindByteOrderMark(std::string_view bytes) {
    constexpr std::string_view kMarks[] = {kUtf8Mark, kUtf16BigEndianMark, kUtf16LittleEndianMark};
    int kind = 1;
    for (const std::string_view mark : kMarks) {
        std::size_t matched = 0;
        while (matched < mark.size() && matched < bytes.size() && bytes[matched] == mark[matched]) ++matched;
        if (matched == mark.size()) return static_cast<ByteOrderMark>(kind);
        bytes.remove_prefix(matched);
        ++kind;
    }
    return ByteOrderMark::kNone;
}

std::string DecodeUtf16(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size() / 2);
    UnitReader reader(bytes);
    std::uint32_t unit = 0;
    for (bool more = reader.Next(unit); more;) {
        const std::uint32_t first = unit;
        more = reader.Next(unit);
        if (IsHighSurrogate(first) && more && IsLowSurrogate(unit)) {
            AppendUtf8(text, CombineSurrogates(first, unit));
            more = reader.Next(unit);
        } else {
            const bool isLone = IsHighSurrogate(first) || IsLowSurrogate(first);
            AppendUtf8(text, isLone ? kReplacementCharacter : first);
        }
    }
    return text;
}

bool TableText::Read(const std::string& path) {
    view_ = {};
    start_ = 0;
    const MapResult result = file_.Map(path);
    if (result != MapResult::kMapped) return result == MapResult::kEmpty;
    switch (FindByteOrderMark(file_.bytes())) {
        case ByteOrderMark::kNone:
            view_ = file_.bytes();
            break;
        case ByteOrderMark::kUtf8:
            view_ = WithoutUtf8Mark(file_.bytes());
            start_ = static_cast<std::int64_t>(file_.bytes().size() - view_.size());
            break;
        case ByteOrderMark::kUtf16BigEndian:
        case ByteOrderMark::kUtf16LittleEndian:
            decoded_ = DecodeUtf16(file_.bytes());
            file_.Unmap();
            view_ = decoded_;
            start_ = -1;
            break;
    }
    return true;
}

}  // namespace zentor
