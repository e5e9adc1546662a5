#include "reader/outline_scan.h"

#include <array>
#include <cstring>

#include "reader/schema_words.h"
#include "reader/unique_names.h"
#include "util/group_limit.h"
#include "util/json_cursor.h"
#include "util/match_name.h"
#include "util/number_text.h"

namespace zentor {

namespace {

// Keys of one kind of object, with their quotes, in the order in which they usually come.
template <std::size_t N>
using Keys = std::array<std::string_view, N>;

constexpr Keys<12> kNodeKeys = {"\"objectType\"",
                                "\"matchName\"",
                                "\"displayName\"",
                                "\"children\"",
                                "\"sampleSetID\"",
                                "\"interpolation\"",
                                "\"hasExpectedFrequencyB\"",
                                "\"sampleCount\"",
                                "\"expectedMaxInterSampleDuration\"",
                                "\"dataType\"",
                                "\"value\"",
                                "\"hasExpectedFrequecyB\""};
enum NodeKey : std::size_t {
    kObjectType,
    kMatchName,
    kDisplayName,
    kChildren,
    kSampleSetId,
    kInterpolation,
    kFrequency,
    kSampleCount,
    kDuration,
    kDataType,
    kValue,
    kFrequencyMisspelled,
};
constexpr Keys<4> kDataTypeKeys = {"\"type\"", "\"numberStringProperties\"", "\"paddedStringProperties\"",
                                   "\"numberArrayProperties\""};
constexpr Keys<2> kNumberKeys = {"\"pattern\"", "\"range\""};
constexpr Keys<3> kPaddedKeys = {"\"maxDigitsInStrLength\"", "\"maxLen\"", "\"eventMarkerB\""};
constexpr Keys<5> kArrayKeys = {"\"pattern\"", "\"arrayRanges\"", "\"arraySize\"", "\"arrayDisplayNames\"",
                                "\"isPoint\""};
constexpr Keys<3> kPatternKeys = {"\"isSigned\"", "\"digitsDecimal\"", "\"digitsInteger\""};
constexpr Keys<3> kRangeKeys = {"\"occurring\"", "\"legal\"", "\"occuring\""};
constexpr Keys<2> kLimitKeys = {"\"min\"", "\"max\""};
constexpr Keys<1> kRangesKeys = {"\"ranges\""};

constexpr unsigned Bit(std::size_t key) { return 1u << key; }

enum class Type : std::uint8_t {
    kNone,
    kNumber,
    kString,
    kBoolean,
    kNumberArray,
    kNumberString,
    kPaddedString,
    kNumberStringArray,
};
enum class ValueKind : std::uint8_t { kNone, kNumber, kString, kBoolean, kNumbers };

// What an object of data type properties says, as far as samples depend on it.
struct DataType {
    Type type = Type::kNone;
    unsigned keys = 0;
    SampleSet set;
};

struct Node {
    unsigned keys = 0;
    std::string_view objectType;
    DataType dataType;
    ValueKind value = ValueKind::kNone;
    std::string_view sampleSetId;
    bool hasFrequency = false;
};

// Every function is false where the text is not plain, and then the scan is over.
class Scan {
public:
    enum class NameCheck { kRising, kHashes };

    Scan(std::string_view bytes, std::size_t offset, const std::function<void(std::size_t)>& passed, NameCheck names)
        : start_(bytes.data()),
          next_(start_ + offset),
          end_(start_ + bytes.size()),
          lastPassed_(next_),
          passed_(passed),
          names_(names) {}

    bool Outline() { return Take('[') && Nodes() && (names_ == NameCheck::kRising || hashes_.AreUnique()); }
    // The names have to be checked in the other way.
    bool NamesAreMixed() const { return namesAreMixed_; }
    std::size_t Offset() const { return static_cast<std::size_t>(next_ - start_); }
    OutlineContents Contents() {
        contents_.index = builder_.Finish();
        return std::move(contents_);
    }

private:
    void SkipSpace() {
        while (next_ != end_ && *next_ <= ' ' &&
               (*next_ == ' ' || *next_ == '\n' || *next_ == '\r' || *next_ == '\t')) {
            ++next_;
        }
    }
    bool Take(char c) {
        if (next_ == end_ || *next_ != c) return false;
        ++next_;
        return true;
    }
    bool TakeText(std::string_view text) {
        if (static_cast<std::size_t>(end_ - next_) < text.size()) return false;
        if (std::memcmp(next_, text.data(), text.size()) != 0) return false;
        next_ += text.size();
        return true;
    }

    // Reads an object member by member: `member` takes the value of the key with a number. Sets which keys there are;
    // each may be there once.
    template <std::size_t N, class Member>
    bool Object(const Keys<N>& keys, unsigned& found, Member&& member) {
        if (!Take('{')) return false;
        SkipSpace();
        found = 0;
        if (Take('}')) return true;
        for (std::size_t usual = 0;;) {
            std::size_t key = usual;
            while (key < N && !TakeText(keys[key])) ++key;
            if (key == N) {
                for (key = 0; key < usual && !TakeText(keys[key]);) ++key;
                if (key == usual) return false;
            }
            if ((found & Bit(key)) != 0) return false;
            found |= Bit(key);
            usual = key + 1;
            SkipSpace();
            if (!Take(':')) return false;
            SkipSpace();
            if (!member(key)) return false;
            SkipSpace();
            if (Take('}')) return true;
            if (!Take(',')) return false;
            SkipSpace();
        }
    }

    // `item` takes each element.
    template <class Item>
    bool Array(std::size_t& count, Item&& item) {
        count = 0;
        if (!Take('[')) return false;
        SkipSpace();
        if (Take(']')) return true;
        for (;;) {
            if (!item()) return false;
            ++count;
            SkipSpace();
            if (Take(']')) return true;
            if (!Take(',')) return false;
            SkipSpace();
        }
    }

    // Any text; escapes stay.
    bool String() {
        if (!Take('"')) return false;
        for (; next_ != end_; ++next_) {
            if (*next_ == '"') {
                ++next_;
                return true;
            }
            if (*next_ == '\\' && ++next_ == end_) return false;
        }
        return false;
    }
    // A text without escapes.
    bool String(std::string_view& text) {
        if (!Take('"')) return false;
        const char* const begin = next_;
        while (next_ != end_ && *next_ != '"' && *next_ != '\\') ++next_;
        text = {begin, static_cast<std::size_t>(next_ - begin)};
        return Take('"');
    }
    bool Boolean(bool& value) {
        value = next_ != end_ && *next_ == 't';
        return TakeText(value ? "true" : "false");
    }
    void SkipDigits() {
        while (next_ != end_ && IsDigit(*next_)) ++next_;
    }
    // A number of which nobody asks the value. One that may be beyond a double is not plain.
    bool Number() {
        Take('-');
        const char* const integer = next_;
        if (!Take('0')) SkipDigits();
        const std::ptrdiff_t digits = next_ - integer;
        constexpr std::ptrdiff_t kSurelyDouble = 300;
        if (digits == 0 || digits > kSurelyDouble) return false;
        if (Take('.')) {
            const char* const fraction = next_;
            SkipDigits();
            if (next_ == fraction) return false;
        }
        if (next_ == end_ || (*next_ | 0x20) != 'e') return true;
        ++next_;
        const bool isNegative = Take('-');
        if (!isNegative) Take('+');
        const char* const exponent = next_;
        SkipDigits();
        return next_ != exponent && (isNegative || (digits < 200 && next_ - exponent <= 2));
    }
    // A whole number of at most 15 digits.
    bool Count(std::uint64_t& count) {
        const char* const begin = next_;
        count = 0;
        if (!Take('0')) {
            for (; next_ != end_ && IsDigit(*next_); ++next_) {
                count = count * 10 + static_cast<std::uint64_t>(*next_ - '0');
                if (next_ - begin == 15) return false;
            }
        }
        return next_ != begin && (next_ == end_ || (*next_ != '.' && (*next_ | 0x20) != 'e'));
    }

    bool Limits() {
        unsigned found = 0;
        return Object(kLimitKeys, found, [&](std::size_t) { return Number(); }) && found == (Bit(0) | Bit(1));
    }
    bool Range() {
        unsigned found = 0;
        if (!Object(kRangeKeys, found, [&](std::size_t) { return Limits(); })) return false;
        return found == (Bit(0) | Bit(1)) || found == (Bit(2) | Bit(1));
    }
    bool Pattern(SampleSet& set) {
        unsigned found = 0;
        bool isSigned = false;
        std::array<std::uint64_t, 3> digits{};
        const auto member = [&](std::size_t key) { return key == 0 ? Boolean(isSigned) : Count(digits[key]); };
        if (!Object(kPatternKeys, found, member) || (found & Bit(0)) == 0) return false;
        set.numberWidth = NumberWidth(isSigned, digits[2], digits[1]);
        return true;
    }
    bool NumberProperties(SampleSet& set) {
        unsigned found = 0;
        const auto member = [&](std::size_t key) { return key == 0 ? Pattern(set) : Range(); };
        return Object(kNumberKeys, found, member) && found == (Bit(0) | Bit(1));
    }
    bool PaddedProperties(SampleSet& set) {
        unsigned found = 0;
        const auto member = [&](std::size_t key) {
            bool ignored = false;
            if (key == 2) return Boolean(ignored);
            return Count(key == 0 ? set.lengthDigits : set.maxLength);
        };
        return Object(kPaddedKeys, found, member) && (found & Bit(2)) != 0;
    }
    bool ArrayProperties(SampleSet& set) {
        unsigned found = 0;
        std::size_t ranges = 0;
        std::size_t names = 0;
        const auto member = [&](std::size_t key) {
            unsigned ignored = 0;
            bool flag = false;
            switch (key) {
                case 0:
                    return Pattern(set);
                case 1:
                    return Object(kRangesKeys, ignored,
                                  [&](std::size_t) { return Array(ranges, [&] { return Range(); }); });
                case 2:
                    return Count(set.arraySize);
                case 3:
                    return Array(names, [&] { return String(); });
                default:
                    return Boolean(flag);
            }
        };
        if (!Object(kArrayKeys, found, member) || (found & (Bit(0) | Bit(1))) != (Bit(0) | Bit(1)) || ranges == 0) {
            return false;
        }
        return (found & Bit(2)) == 0 || (ranges == set.arraySize && (names == 0 || names == ranges));
    }

    bool TypeWord(Type& type) {
        static constexpr std::array<std::string_view, 8> kWords = {"",
                                                                   words::kNumber,
                                                                   words::kString,
                                                                   words::kBoolean,
                                                                   words::kNumberArray,
                                                                   words::kNumberString,
                                                                   words::kPaddedString,
                                                                   words::kNumberStringArray};
        std::string_view text;
        if (!String(text)) return false;
        for (std::size_t k = 1; k < kWords.size(); ++k) {
            if (text != kWords[k]) continue;
            type = static_cast<Type>(k);
            return true;
        }
        return false;
    }
    bool DataTypeObject(DataType& dataType) {
        const auto member = [&](std::size_t key) {
            switch (key) {
                case 0:
                    return TypeWord(dataType.type);
                case 1:
                    return NumberProperties(dataType.set);
                case 2:
                    return PaddedProperties(dataType.set);
                default:
                    return ArrayProperties(dataType.set);
            }
        };
        if (!Object(kDataTypeKeys, dataType.keys, member)) return false;
        switch (dataType.type) {  // it has the properties of its type, and no others
            case Type::kNumber:
            case Type::kNumberString:
                return dataType.keys == (Bit(0) | Bit(1));
            case Type::kString:
            case Type::kPaddedString:
                dataType.set.kind = SampleKind::kPaddedString;
                return dataType.keys == (Bit(0) | Bit(2));
            case Type::kNumberArray:
            case Type::kNumberStringArray:
                dataType.set.kind = SampleKind::kNumberArray;
                return dataType.keys == (Bit(0) | Bit(3));
            default:
                return dataType.keys == Bit(0) && dataType.type == Type::kBoolean;
        }
    }

    bool Value(ValueKind& kind) {
        if (next_ == end_) return false;
        bool flag = false;
        std::size_t count = 0;
        switch (*next_) {
            case '"':
                kind = ValueKind::kString;
                return String();
            case 't':
            case 'f':
                kind = ValueKind::kBoolean;
                return Boolean(flag);
            case '[':
                kind = ValueKind::kNumbers;
                return Array(count, [&] { return Number(); });
            default:
                kind = ValueKind::kNumber;
                return Number();
        }
    }

    bool MatchName() {
        std::string_view name;
        if (!String(name) || !IsMatchName(name)) return false;
        if (names_ == NameCheck::kHashes) {
            hashes_.Add(name);
        } else if (!rising_.Add(name)) {
            namesAreMixed_ = true;
        }
        return !namesAreMixed_;
    }

    bool Children(const Node& node) {
        constexpr unsigned kBefore = Bit(kObjectType) | Bit(kMatchName) | Bit(kDisplayName);
        if (node.keys != (kBefore | Bit(kChildren)) || node.objectType != words::kDataGroup || depth_ == kGroupLimit) {
            return false;
        }
        builder_.BeginGroup(nodeOffset_);
        ++depth_;
        if (!Take('[') || !Nodes()) return false;
        --depth_;
        builder_.EndGroup();
        return true;
    }

    bool Member(Node& node, std::size_t key) {
        switch (key) {
            case kObjectType:
                return String(node.objectType);
            case kMatchName:
                return MatchName();
            case kDisplayName:
            case kDuration:
                return String();
            case kChildren:
                return Children(node);
            case kSampleSetId:
                return String(node.sampleSetId);
            case kInterpolation: {
                std::string_view word;
                return String(word) && (word == words::kLinear || word == words::kHold);
            }
            case kFrequency:
            case kFrequencyMisspelled:
                return Boolean(node.hasFrequency);
            case kSampleCount:
                return Count(node.dataType.set.count);
            case kDataType:
                return DataTypeObject(node.dataType);
            default:
                return Value(node.value);
        }
    }

    // After "[".
    bool Nodes() {
        SkipSpace();
        if (Take(']')) return true;
        for (;;) {
            if (!OneNode()) return false;
            SkipSpace();
            if (Take(']')) return true;
            if (!Take(',')) return false;
            SkipSpace();
        }
    }

    bool OneNode() {
        constexpr std::ptrdiff_t kPassedAtOnce = std::ptrdiff_t{32} << 20;
        if (next_ - lastPassed_ >= kPassedAtOnce) {
            passed_(Offset());
            lastPassed_ = next_;
        }
        const std::size_t offset = Offset();
        nodeOffset_ = offset;
        Node node;
        if (!Object(kNodeKeys, node.keys, [&](std::size_t key) { return Member(node, key); })) return false;
        constexpr unsigned kOfAll = Bit(kObjectType) | Bit(kMatchName) | Bit(kDisplayName);
        if (node.objectType == words::kDataStatic) {
            if (node.keys != (kOfAll | Bit(kDataType) | Bit(kValue)) || !FitsType(node)) return false;
            builder_.AddStatic(offset);
            return true;
        }
        if (node.objectType == words::kDataDynamic) return node.keys >= kOfAll && DynamicNode(node, offset);
        // The children have been read, and with them what a group needs.
        return node.keys == (kOfAll | Bit(kChildren));
    }

    static bool FitsType(const Node& node) {
        switch (node.dataType.type) {
            case Type::kNumber:
                return node.value == ValueKind::kNumber;
            case Type::kString:
                return node.value == ValueKind::kString;
            case Type::kBoolean:
                return node.value == ValueKind::kBoolean;
            case Type::kNumberArray:
                return node.value == ValueKind::kNumbers;
            default:
                return false;
        }
    }

    bool DynamicNode(Node& node, std::size_t offset) {
        constexpr unsigned kNeeded = Bit(kObjectType) | Bit(kMatchName) | Bit(kDisplayName) | Bit(kSampleSetId) |
                                     Bit(kInterpolation) | Bit(kSampleCount) | Bit(kDataType);
        constexpr unsigned kFlags = Bit(kFrequency) | Bit(kFrequencyMisspelled);
        const unsigned flags = node.keys & kFlags;
        const unsigned others = node.keys & ~kFlags & ~Bit(kDuration);
        const bool hasDuration = (node.keys & Bit(kDuration)) != 0;
        if (others != kNeeded || flags == 0 || flags == kFlags || (node.hasFrequency && !hasDuration)) return false;
        const Type type = node.dataType.type;
        if (type != Type::kNumberString && type != Type::kPaddedString && type != Type::kNumberStringArray)
            return false;
        if (!contents_.ids.Add(node.sampleSetId, contents_.sets.size())) return false;
        node.dataType.set.id = node.sampleSetId;
        contents_.sets.push_back(std::move(node.dataType.set));
        builder_.AddDynamic(offset);
        return true;
    }

    const char* start_;
    const char* next_;
    const char* end_;
    const char* lastPassed_;
    const std::function<void(std::size_t)>& passed_;
    NameCheck names_;
    bool namesAreMixed_ = false;
    RisingNames rising_;
    NameHashes hashes_;
    std::size_t depth_ = 0;
    std::size_t nodeOffset_ = 0;  // of the node that is being read, until its children are
    OutlineIndexBuilder builder_;
    OutlineContents contents_;
};

}  // namespace

std::optional<OutlineContents> ScanOutline(std::string_view bytes, std::size_t& offset,
                                           const std::function<void(std::size_t)>& passed) {
    for (const auto names : {Scan::NameCheck::kRising, Scan::NameCheck::kHashes}) {
        Scan scan(bytes, offset, passed, names);
        if (scan.Outline()) {
            offset = scan.Offset();
            return scan.Contents();
        }
        if (!scan.NamesAreMixed()) break;
    }
    return std::nullopt;
}

}  // namespace zentor
