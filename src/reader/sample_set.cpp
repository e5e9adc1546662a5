#include "reader/sample_set.h"

#include <limits>

#include "errors/raise.h"
#include "reader/schema_words.h"

namespace zentor {

namespace {

// Every size is below 2^56 as a sum of counts; only products can be out of all bounds, and are held there.
constexpr std::uint64_t kHuge = std::numeric_limits<std::uint64_t>::max() / 4;

std::uint64_t Product(std::uint64_t a, std::uint64_t b) { return a != 0 && b > kHuge / a ? kHuge : a * b; }

std::uint64_t CountOf(const JsonValue& object, std::string_view key) {
    const JsonValue* const count = FindMember(object, key);
    return count == nullptr ? 0 : static_cast<std::uint64_t>(count->GetDouble());
}

std::uint64_t NumberWidth(const JsonValue& properties) {
    const JsonValue& pattern = *FindMember(properties, words::kPattern);
    return zentor::NumberWidth(FindMember(pattern, words::kIsSigned)->GetBool(),
                               CountOf(pattern, words::kDigitsInteger), CountOf(pattern, words::kDigitsDecimal));
}

}  // namespace

std::uint64_t NumberWidth(bool isSigned, std::uint64_t digitsInteger, std::uint64_t digitsDecimal) {
    return 2 + (isSigned ? 1 : 0) + digitsInteger + (digitsDecimal == 0 ? 0 : digitsDecimal + 1);
}

std::uint64_t SampleSet::ValueWidth() const {
    switch (kind) {
        case SampleKind::kNumber:
            return numberWidth;
        case SampleKind::kNumberArray:
            return Product(numberWidth + 1, arraySize) + 1;
        default:
            return kPaddedStart.size() + lengthDigits + (place.hasQuotedLength ? 2 : 0) + kPaddedMiddle.size() +
                   maxLength + kPaddedEnd.size();
    }
}

std::uint64_t SampleSet::RecordWidth() const {
    return kRecordStart.size() + timeWidth + kRecordMiddle.size() + ValueWidth() + kRecordEnd.size();
}

std::uint64_t SampleSet::Size() const { return count == 0 ? 0 : Product(RecordWidth() + 1, count) - 1; }

std::string SampleSet::PlaceOf(std::uint64_t index) const {
    return Quoted("sampleSetID:" + Excerpt(id) + "/sample[" + std::to_string(index) + "]");
}

SampleSet DescribeSampleSet(const JsonValue& node) {
    SampleSet set;
    set.id = TextOf(*FindMember(node, words::kSampleSetId));
    set.count = CountOf(node, words::kSampleCount);
    const JsonValue& dataType = *FindMember(node, words::kDataType);
    const std::string_view type = TextOf(*FindMember(dataType, words::kType));
    if (type == words::kPaddedString) {
        const JsonValue& properties = *FindMember(dataType, words::kPaddedStringProperties);
        set.kind = SampleKind::kPaddedString;
        set.maxLength = CountOf(properties, words::kMaxLen);
        set.lengthDigits = CountOf(properties, words::kMaxDigitsInStrLength);
    } else if (type == words::kNumberString) {
        set.numberWidth = NumberWidth(*FindMember(dataType, words::kNumberStringProperties));
    } else {
        const JsonValue& properties = *FindMember(dataType, words::kNumberArrayProperties);
        set.kind = SampleKind::kNumberArray;
        set.numberWidth = NumberWidth(properties);
        set.arraySize = CountOf(properties, words::kArraySize);
    }
    return set;
}

}  // namespace zentor
