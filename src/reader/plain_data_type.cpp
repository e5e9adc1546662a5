#include "reader/plain_data_type.h"

#include <array>

#include "format/words.h"

namespace zentor {

namespace {

constexpr PlainKeys<4> kDataTypeKeys = {kQuoted<words::kType>, kQuoted<words::kNumberStringProperties>,
                                        kQuoted<words::kPaddedStringProperties>,
                                        kQuoted<words::kNumberArrayProperties>};
constexpr PlainKeys<2> kNumberKeys = {kQuoted<words::kPattern>, kQuoted<words::kRange>};
constexpr PlainKeys<3> kPaddedKeys = {kQuoted<words::kMaxDigitsInStrLength>, kQuoted<words::kMaxLen>,
                                      kQuoted<words::kEventMarker>};
constexpr PlainKeys<5> kArrayKeys = {kQuoted<words::kPattern>, kQuoted<words::kArrayRanges>, kQuoted<words::kArraySize>,
                                     kQuoted<words::kArrayDisplayNames>, kQuoted<words::kIsPoint>};
constexpr PlainKeys<3> kPatternKeys = {kQuoted<words::kIsSigned>, kQuoted<words::kDigitsDecimal>,
                                       kQuoted<words::kDigitsInteger>};
constexpr PlainKeys<3> kRangeKeys = {kQuoted<words::kOccurring>, kQuoted<words::kLegal>,
                                     kQuoted<words::kOccurringMisspelled>};
constexpr PlainKeys<2> kLimitKeys = {kQuoted<words::kMin>, kQuoted<words::kMax>};
constexpr PlainKeys<1> kRangesKeys = {kQuoted<words::kRanges>};

bool Limits(PlainJson& json) {
    unsigned found = 0;
    return json.Object(kLimitKeys, found, [&](std::size_t) { return json.Number(); }) &&
           found == (KeyBit(0) | KeyBit(1));
}
bool Range(PlainJson& json) {
    unsigned found = 0;
    if (!json.Object(kRangeKeys, found, [&](std::size_t) { return Limits(json); })) return false;
    return found == (KeyBit(0) | KeyBit(1)) || found == (KeyBit(2) | KeyBit(1));
}
bool Pattern(PlainJson& json, SampleSet& set) {
    unsigned found = 0;
    bool isSigned = false;
    std::array<std::uint64_t, 3> digits{};
    const auto member = [&](std::size_t key) { return key == 0 ? json.Boolean(isSigned) : json.Count(digits[key]); };
    if (!json.Object(kPatternKeys, found, member) || (found & KeyBit(0)) == 0) return false;
    set.layout.pattern = {isSigned, digits[2], digits[1]};
    return true;
}
bool NumberProperties(PlainJson& json, SampleSet& set) {
    unsigned found = 0;
    const auto member = [&](std::size_t key) { return key == 0 ? Pattern(json, set) : Range(json); };
    return json.Object(kNumberKeys, found, member) && found == (KeyBit(0) | KeyBit(1));
}
bool PaddedProperties(PlainJson& json, SampleSet& set) {
    unsigned found = 0;
    const auto member = [&](std::size_t key) {
        bool ignored = false;
        if (key == 2) return json.Boolean(ignored);
        return json.Count(key == 0 ? set.layout.lengthDigits : set.layout.maxLength);
    };
    return json.Object(kPaddedKeys, found, member) && (found & KeyBit(2)) != 0;
}
bool ArrayProperties(PlainJson& json, SampleSet& set) {
    unsigned found = 0;
    std::size_t ranges = 0;
    std::size_t names = 0;
    const auto member = [&](std::size_t key) {
        unsigned ignored = 0;
        bool flag = false;
        switch (key) {
            case 0:
                return Pattern(json, set);
            case 1:
                return json.Object(kRangesKeys, ignored,
                                   [&](std::size_t) { return json.Array(ranges, [&] { return Range(json); }); });
            case 2:
                return json.Count(set.layout.arraySize);
            case 3:
                return json.Array(names, [&] { return json.String(); });
            default:
                return json.Boolean(flag);
        }
    };
    if (!json.Object(kArrayKeys, found, member) || (found & (KeyBit(0) | KeyBit(1))) != (KeyBit(0) | KeyBit(1)) ||
        ranges == 0) {
        return false;
    }
    return (found & KeyBit(2)) == 0 || (ranges == set.layout.arraySize && (names == 0 || names == ranges));
}

bool TypeWord(PlainJson& json, PlainType& type) {
    static constexpr std::array<std::string_view, 8> kWords = {"",
                                                               words::kNumber,
                                                               words::kString,
                                                               words::kBoolean,
                                                               words::kNumberArray,
                                                               words::kNumberString,
                                                               words::kPaddedString,
                                                               words::kNumberStringArray};
    std::string_view text;
    if (!json.String(text)) return false;
    for (std::size_t k = 1; k < kWords.size(); ++k) {
        if (text != kWords[k]) continue;
        type = static_cast<PlainType>(k);
        return true;
    }
    return false;
}

}  // namespace

bool ReadDataType(PlainJson& json, PlainDataType& dataType) {
    unsigned keys = 0;
    const auto member = [&](std::size_t key) {
        switch (key) {
            case 0:
                return TypeWord(json, dataType.type);
            case 1:
                return NumberProperties(json, dataType.set);
            case 2:
                return PaddedProperties(json, dataType.set);
            default:
                return ArrayProperties(json, dataType.set);
        }
    };
    if (!json.Object(kDataTypeKeys, keys, member)) return false;
    switch (dataType.type) {  // it has the properties of its type, and no others
        case PlainType::kNumber:
        case PlainType::kNumberString:
            return keys == (KeyBit(0) | KeyBit(1));
        case PlainType::kString:
        case PlainType::kPaddedString:
            dataType.set.layout.kind = SampleKind::kPaddedString;
            return keys == (KeyBit(0) | KeyBit(2));
        case PlainType::kNumberArray:
        case PlainType::kNumberStringArray:
            dataType.set.layout.kind = SampleKind::kNumberArray;
            return keys == (KeyBit(0) | KeyBit(3));
        default:
            return keys == KeyBit(0) && dataType.type == PlainType::kBoolean;
    }
}

}  // namespace zentor
