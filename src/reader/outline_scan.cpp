#include "reader/outline_scan.h"

#include "format/limits.h"
#include "format/match_name.h"
#include "format/words.h"
#include "reader/plain_data_type.h"
#include "reader/plain_json.h"
#include "reader/unique_names.h"

namespace zentor {

namespace {

constexpr PlainKeys<12> kNodeKeys = {kQuoted<words::kObjectType>,
                                     kQuoted<words::kMatchName>,
                                     kQuoted<words::kDisplayName>,
                                     kQuoted<words::kChildren>,
                                     kQuoted<words::kSampleSetId>,
                                     kQuoted<words::kInterpolation>,
                                     kQuoted<words::kHasExpectedFrequency>,
                                     kQuoted<words::kSampleCount>,
                                     kQuoted<words::kMaxInterSampleDuration>,
                                     kQuoted<words::kDataType>,
                                     kQuoted<words::kValue>,
                                     kQuoted<words::kHasExpectedFrequencyMisspelled>};
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
enum class ValueKind : std::uint8_t { kNone, kNumber, kString, kBoolean, kNumbers };

struct Node {
    unsigned keys = 0;
    std::string_view objectType;
    PlainDataType dataType;
    ValueKind value = ValueKind::kNone;
    std::string_view sampleSetId;
    bool hasFrequency = false;
};

// Every function is false where the text is not plain, and then the scan is over.
class Scan : private PlainJson {
public:
    enum class NameCheck { kRising, kHashes };

    Scan(std::string_view bytes, std::size_t offset, const std::function<void(std::size_t)>& passed, NameCheck names)
        : PlainJson(bytes, offset), lastPassed_(offset), passed_(passed), names_(names) {}

    bool Outline() { return Take('[') && Nodes() && (names_ == NameCheck::kRising || hashes_.AreUnique()); }
    // The names have to be checked in the other way.
    bool NamesAreMixed() const { return namesAreMixed_; }
    using PlainJson::Offset;
    OutlineContents Contents() {
        contents_.index = builder_.Finish();
        return std::move(contents_);
    }

private:
    bool Value(ValueKind& kind) {
        bool flag = false;
        std::size_t count = 0;
        switch (Peek()) {
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
        constexpr unsigned kBefore = KeyBit(kObjectType) | KeyBit(kMatchName) | KeyBit(kDisplayName);
        if (node.keys != (kBefore | KeyBit(kChildren)) || node.objectType != words::kDataGroup ||
            depth_ == kGroupLimit) {
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
                return ReadDataType(*this, node.dataType);
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
        constexpr std::size_t kPassedAtOnce = std::size_t{32} << 20;
        const std::size_t offset = Offset();
        if (offset - lastPassed_ >= kPassedAtOnce) {
            passed_(offset);
            lastPassed_ = offset;
        }
        nodeOffset_ = offset;
        Node node;
        if (!Object(kNodeKeys, node.keys, [&](std::size_t key) { return Member(node, key); })) return false;
        constexpr unsigned kOfAll = KeyBit(kObjectType) | KeyBit(kMatchName) | KeyBit(kDisplayName);
        if (node.objectType == words::kDataStatic) {
            if (node.keys != (kOfAll | KeyBit(kDataType) | KeyBit(kValue)) || !FitsType(node)) return false;
            builder_.AddStatic(offset);
            return true;
        }
        if (node.objectType == words::kDataDynamic) return node.keys >= kOfAll && DynamicNode(node, offset);
        // The children have been read, and with them what a group needs.
        return node.keys == (kOfAll | KeyBit(kChildren));
    }

    static bool FitsType(const Node& node) {
        switch (node.dataType.type) {
            case PlainType::kNumber:
                return node.value == ValueKind::kNumber;
            case PlainType::kString:
                return node.value == ValueKind::kString;
            case PlainType::kBoolean:
                return node.value == ValueKind::kBoolean;
            case PlainType::kNumberArray:
                return node.value == ValueKind::kNumbers;
            default:
                return false;
        }
    }

    bool DynamicNode(Node& node, std::size_t offset) {
        constexpr unsigned kNeeded = KeyBit(kObjectType) | KeyBit(kMatchName) | KeyBit(kDisplayName) |
                                     KeyBit(kSampleSetId) | KeyBit(kInterpolation) | KeyBit(kSampleCount) |
                                     KeyBit(kDataType);
        constexpr unsigned kFlags = KeyBit(kFrequency) | KeyBit(kFrequencyMisspelled);
        const unsigned flags = node.keys & kFlags;
        const unsigned others = node.keys & ~kFlags & ~KeyBit(kDuration);
        const bool hasDuration = (node.keys & KeyBit(kDuration)) != 0;
        if (others != kNeeded || flags == 0 || flags == kFlags || (node.hasFrequency && !hasDuration)) return false;
        const PlainType type = node.dataType.type;
        if (type != PlainType::kNumberString && type != PlainType::kPaddedString &&
            type != PlainType::kNumberStringArray)
            return false;
        if (!contents_.ids.Add(node.sampleSetId, contents_.sets.size())) return false;
        node.dataType.set.id = node.sampleSetId;
        contents_.sets.push_back(std::move(node.dataType.set));
        builder_.AddDynamic(offset);
        return true;
    }

    std::size_t lastPassed_;
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
