#include "reader/sample_set.h"

#include "errors/raise.h"
#include "format/words.h"

namespace zentor {

namespace {

std::uint64_t CountOf(const JsonValue& object, std::string_view key) {
    const JsonValue* const count = FindMember(object, key);
    return count == nullptr ? 0 : static_cast<std::uint64_t>(count->GetDouble());
}

PaddedPattern PatternOf(const JsonValue& properties) {
    const JsonValue& pattern = *FindMember(properties, words::kPattern);
    return {FindMember(pattern, words::kIsSigned)->GetBool(), CountOf(pattern, words::kDigitsInteger),
            CountOf(pattern, words::kDigitsDecimal)};
}

}  // namespace

std::string SampleSet::PlaceOf(std::uint64_t index) const {
    return Quoted(std::string(words::kSampleSetId) + ":" + Excerpt(id) + "/sample[" + std::to_string(index) + "]");
}

SampleSet DescribeSampleSet(const JsonValue& node) {
    SampleSet set;
    set.id = TextOf(*FindMember(node, words::kSampleSetId));
    set.count = CountOf(node, words::kSampleCount);
    RecordLayout& layout = set.layout;
    const JsonValue& dataType = *FindMember(node, words::kDataType);
    const std::string_view type = TextOf(*FindMember(dataType, words::kType));
    if (type == words::kPaddedString) {
        const JsonValue& properties = *FindMember(dataType, words::kPaddedStringProperties);
        layout.kind = SampleKind::kPaddedString;
        layout.maxLength = CountOf(properties, words::kMaxLen);
        layout.lengthDigits = CountOf(properties, words::kMaxDigitsInStrLength);
    } else if (type == words::kNumberString) {
        layout.pattern = PatternOf(*FindMember(dataType, words::kNumberStringProperties));
    } else {
        const JsonValue& properties = *FindMember(dataType, words::kNumberArrayProperties);
        layout.kind = SampleKind::kNumberArray;
        layout.pattern = PatternOf(properties);
        layout.arraySize = CountOf(properties, words::kArraySize);
    }
    return set;
}

}  // namespace zentor
