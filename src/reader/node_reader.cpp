#include "reader/node_reader.h"

#include <algorithm>

#include "format/words.h"
#include "reader/value_reader.h"

namespace zentor {

namespace {

constexpr std::array<std::string_view, 12> kKeys = {words::kObjectType,
                                                    words::kMatchName,
                                                    words::kDisplayName,
                                                    words::kDataType,
                                                    words::kValue,
                                                    words::kSampleSetId,
                                                    words::kInterpolation,
                                                    words::kHasExpectedFrequency,
                                                    words::kSampleCount,
                                                    words::kMaxInterSampleDuration,
                                                    words::kHasExpectedFrequencyMisspelled,
                                                    words::kChildren};

std::size_t KeyNumber(std::string_view key) {
    return static_cast<std::size_t>(std::find(kKeys.begin(), kKeys.end(), key) - kKeys.begin());
}

bool IsKey(const RawString& key, std::string_view name) {
    return key.hasBackslash ? key.Decoded() == name : key.text == name;
}

}  // namespace

bool NodeText::Find(JsonCursor& cursor, const AfterChildren& after) {
    cursor.SkipWhiteSpace();
    if (!cursor.Skip('{')) return false;
    cursor.SkipWhiteSpace();
    if (cursor.Skip('}')) return true;
    for (;;) {
        cursor.SkipWhiteSpace();
        RawString key;
        if (!cursor.TakeString(key)) return false;
        cursor.SkipWhiteSpace();
        if (!cursor.Skip(':')) return false;
        cursor.SkipWhiteSpace();
        if (cursor.AtEnd()) return false;
        const std::size_t begin = cursor.Offset();
        const bool isArray = cursor.Peek() == '[';
        if (isArray && !children_ && !hasOtherChildren_ && IsKey(key, words::kChildren)) {
            children_ = begin;
            const std::optional<std::size_t> next = after(begin);
            if (!next) return true;
            goesOn_ = true;
            cursor.MoveTo(*next);
        } else {
            cursor.SkipValue();
            Keep(key, begin, cursor.Offset());
        }
        cursor.SkipWhiteSpace();
        if (cursor.Skip('}')) return true;
        if (!cursor.Skip(',')) return false;
    }
}

void NodeText::Keep(const RawString& key, std::size_t begin, std::size_t end) {
    const std::size_t number = key.hasBackslash ? KeyNumber(key.Decoded()) : KeyNumber(key.text);
    if (number == kKeys.size() || spans_[number].end != 0) return;
    if (kKeys[number] == words::kChildren) {
        if (children_) return;
        hasOtherChildren_ = true;
    }
    spans_[number] = {begin, end};
}

void NodeText::BuildValues(std::string_view bytes, JsonDocument& values) const {
    const auto generate = [&](JsonDocument& builder) {
        builder.StartObject();
        JsonSize count = 0;
        for (std::size_t k = 0; k < kKeys.size(); ++k) {
            if (spans_[k].end == 0) continue;
            builder.Key(kKeys[k].data(), static_cast<JsonSize>(kKeys[k].size()), false);
            JsonCursor cursor(bytes.substr(0, spans_[k].end), spans_[k].begin);
            ReadValueInto(builder, cursor, words::kDataOutline);
            ++count;
        }
        return builder.EndObject(count);
    };
    values.Populate(generate);
}

std::string_view NodeText::TextOfMember(std::string_view bytes, std::string_view key) const {
    const std::size_t number = KeyNumber(key);
    if (number == kKeys.size()) return {};
    return bytes.substr(spans_[number].begin, spans_[number].end - spans_[number].begin);
}

}  // namespace zentor
