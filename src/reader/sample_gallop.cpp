#include "reader/sample_gallop.h"

#include <algorithm>

#include "format/sample_record.h"
#include "format/words.h"
#include "util/json_cursor.h"

namespace zentor {

namespace {

// Records of one set, as far as their times tell.
class Records {
public:
    // False when there is no record at `start`.
    bool Begin(std::string_view bytes, std::size_t start) {
        bytes_ = bytes;
        start_ = start;
        JsonCursor cursor(bytes, start + RecordLayout::kTimeOffset - 1);
        RawString time;
        if (!RecordLayout::IsAtRecord(bytes.substr(start)) || !cursor.TakeString(time)) return false;
        timeWidth_ = time.text.size();
        cursor.MoveTo(start);
        cursor.SkipValue();
        width_ = cursor.Offset() - start;
        most_ = (bytes.size() - start) / (width_ + 1);
        return true;
    }

    // Behind the last record: the first place that does not hold one which comes after the one before. `usual`: how
    // many there were in the set before this one, as there often are in all.
    std::size_t End(std::size_t usual) const {
        if (usual != 0 && IsRecordAfter(usual - 1, 0)) {
            const std::size_t end = EndOf(usual - 1);
            if (end != bytes_.size() && bytes_[end] == ']') return end;
        }
        std::size_t last = 0;  // known to be one
        std::size_t beyond = 1;
        while (IsRecordAfter(beyond, last)) {
            last = beyond;
            beyond *= 2;
        }
        while (beyond - last > 1) {
            const std::size_t middle = last + (beyond - last) / 2;
            if (IsRecordAfter(middle, last)) {
                last = middle;
            } else {
                beyond = middle;
            }
        }
        return EndOf(last);
    }
    std::size_t CountUpTo(std::size_t end) const { return (end - start_ + 1) / (width_ + 1); }

private:
    std::size_t EndOf(std::size_t index) const { return start_ + index * (width_ + 1) + width_; }

    // Records of a set that comes later may stand in the same steps. Their times begin anew.
    bool IsRecordAfter(std::size_t index, std::size_t other) const {
        if (index == other) return true;
        if (index >= most_) return false;
        const std::size_t at = start_ + index * (width_ + 1);
        return bytes_[at - 1] == ',' && RecordLayout::IsAtRecord(bytes_.substr(at)) && TimeAt(index) >= TimeAt(other);
    }
    std::string_view TimeAt(std::size_t index) const {
        return bytes_.substr(start_ + index * (width_ + 1) + RecordLayout::kTimeOffset, timeWidth_);
    }

    std::string_view bytes_;
    std::size_t start_ = 0;
    std::size_t timeWidth_ = 0;
    std::size_t width_ = 0;
    std::size_t most_ = 0;
};

bool TakeKey(JsonCursor& cursor, std::string_view expected) {
    RawString key;
    cursor.SkipWhiteSpace();
    if (!cursor.TakeString(key) || key.text != expected) return false;
    cursor.SkipWhiteSpace();
    if (!cursor.Skip(':')) return false;
    cursor.SkipWhiteSpace();
    return true;
}

// `count`: of records in the set before, and in this one then.
bool TakeSet(JsonCursor& cursor, std::size_t& count) {
    RawString id;
    cursor.SkipWhiteSpace();
    if (!cursor.Skip('{') || !TakeKey(cursor, words::kSampleSetId) || !cursor.TakeString(id)) return false;
    cursor.SkipWhiteSpace();
    if (!cursor.Skip(',') || !TakeKey(cursor, words::kSamples) || !cursor.Skip('[')) return false;
    Records records;
    if (cursor.AtEnd()) return false;
    if (cursor.Peek() != ']') {
        if (!records.Begin(cursor.Bytes(), cursor.Offset())) return false;
        const std::size_t end = records.End(count);
        count = records.CountUpTo(end);
        cursor.MoveTo(end);
    }
    return cursor.Skip(']') && cursor.Skip('}');
}

}  // namespace

std::optional<std::size_t> GallopOverSamples(std::string_view bytes, std::size_t begin) {
    JsonCursor cursor(bytes, begin);
    cursor.Skip('[');
    cursor.SkipWhiteSpace();
    if (cursor.Skip(']')) return cursor.Offset();
    for (std::size_t count = 0;;) {
        if (!TakeSet(cursor, count)) return std::nullopt;
        cursor.SkipWhiteSpace();
        if (cursor.Skip(']')) return cursor.Offset();
        if (!cursor.Skip(',')) return std::nullopt;
    }
}

}  // namespace zentor
