#include "reader/sample_index.h"

#include <cstdint>
#include <vector>

#include "errors/raise.h"
#include "format/words.h"
#include "reader/bracket_search.h"
#include "util/json_cursor.h"

namespace zentor {

namespace {

class IndexWalk {
public:
    IndexWalk(std::string_view bytes, std::size_t begin, std::size_t end, OutlineContents& outline)
        : cursor_(bytes, begin), end_(end), outline_(outline), seen_(outline.sets.size()) {}

    void Walk() {
        cursor_.Skip('[');
        cursor_.SkipWhiteSpace();
        if (cursor_.Skip(']')) return;
        for (bool isLast = false; !isLast;) {
            cursor_.SkipWhiteSpace();
            isLast = TakeElement();
        }
    }

private:
    std::int64_t Offset() const { return static_cast<std::int64_t>(cursor_.Offset()); }

    // Whether it is the last one.
    bool TakeElement() {
        if (!cursor_.Skip('{')) Raise({kInvalidJsonObject, Offset()}, Quoted(words::kDataDynamicSamples));
        TakeKey(words::kSampleSetId);
        SampleSet& set = TakeSampleSetId();
        cursor_.SkipWhiteSpace();
        if (!cursor_.Skip(',')) Raise({kInvalidPropertyMissingComma, Offset()}, words::kSampleSetId);
        TakeKey(words::kSamples);
        if (!cursor_.Skip('[')) {
            Raise({kInvalidSamplePropertyType, Offset()}, "[", words::kSamples, Quoted("JSON Array"), Excerpt(set.id));
        }
        TakeSamples(set);
        cursor_.SkipWhiteSpace();
        if (cursor_.Skip(',')) return false;
        const std::size_t closing = cursor_.Offset();
        if (!cursor_.Skip(']') || cursor_.Offset() != end_) RaiseSetData(set, closing);
        return true;
    }

    void TakeKey(std::string_view expected) {
        cursor_.SkipWhiteSpace();
        RawString key;
        const std::int64_t offset = Offset();
        if (!cursor_.TakeString(key) || key.text != expected) {
            Raise({kMissingRequiredProperties, offset}, expected);
        }
        cursor_.SkipWhiteSpace();
        if (!cursor_.Skip(':')) Raise({kInvalidPropertyMissingColon, Offset()}, expected);
        cursor_.SkipWhiteSpace();
    }

    SampleSet& TakeSampleSetId() {
        RawString id;
        const std::int64_t offset = Offset();
        if (!cursor_.TakeString(id)) Raise({kMissingRequiredProperties, offset}, words::kSampleSetId);
        const std::uint64_t* const number =
            id.hasBackslash ? outline_.ids.Find(id.Decoded()) : outline_.ids.Find(id.text);
        if (number == nullptr) Raise({kDynamicNodeNotPresent, offset}, Excerpt(id.Decoded()));
        SampleSet& set = outline_.sets[*number];
        if (seen_[*number]) RaiseSetData(set, static_cast<std::size_t>(offset));
        seen_[*number] = true;
        return set;
    }

    // Goes past the records, the "]" and the "}".
    void TakeSamples(SampleSet& set) {
        const std::string_view bytes = cursor_.Bytes();
        set.place.start = cursor_.Offset();
        set.place.hasQuotedLength =
            set.layout.kind == SampleKind::kPaddedString && set.layout.SeesQuotedLength(bytes.substr(set.place.start));
        set.layout.hasQuotedLength = set.place.hasQuotedLength;
        const std::uint64_t size = set.Size();
        if (size >= bytes.size() - set.place.start) {
            // The set is told of when somebody asks for its samples; here it is only left out.
            set.place.state = SamplePlace::State::kPastEnd;
            std::size_t depth = 1;
            cursor_.MoveTo(set.place.start + FindClosingBracket(bytes.substr(set.place.start), depth));
        } else {
            if (set.count != 0) set.place.state = SamplePlace::State::kPresent;
            cursor_.MoveTo(set.place.start + size);
            if (!cursor_.Skip(']')) RaiseSetData(set, cursor_.Offset());
        }
        if (!cursor_.Skip('}')) RaiseSetData(set, cursor_.Offset());
    }

    [[noreturn]] static void RaiseSetData(const SampleSet& set, std::size_t offset) {
        Raise({kInvalidSampleSetData, static_cast<std::int64_t>(offset)}, Excerpt(set.id));
    }

    JsonCursor cursor_;
    std::size_t end_;
    OutlineContents& outline_;
    std::vector<bool> seen_;  // by the numbers of the dynamic nodes
};

}  // namespace

void IndexSampleSets(std::string_view bytes, std::size_t begin, std::size_t end, OutlineContents& outline) {
    IndexWalk(bytes, begin, end, outline).Walk();
}

}  // namespace zentor
