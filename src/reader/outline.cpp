#include "reader/outline.h"

#include <algorithm>

#include "errors/exception.h"
#include "errors/raise.h"
#include "format/words.h"

namespace zentor {

namespace {

bool IsRoot(const ZT_DataPathItem& item) {
    return item.index == -1 && (item.matchName.empty() || item.matchName == words::kDataOutline);
}

constexpr std::size_t kSiblingsAtOnce = std::size_t{1} << 16;
constexpr std::size_t kFirstTry = 1024;

// How much to read of a node whose text has not ended yet. It has an end while the document is as it was.
std::size_t Longer(std::size_t least, const TextWindow& window) {
    window.bytes().CheckUnchanged();
    if (least >= window.bytes().Size()) Raise(kCorruptFile);
    return least * 4;
}

bool Is(const RawString& key, std::string_view word) {
    return key.hasBackslash ? key.Decoded() == word : key.text == word;
}

}  // namespace

NodeNumber Outline::FindNode(const DocumentBytes& bytes, const ZT_DataPath& path) const {
    if (path.items.empty() || !IsRoot(path.items.front())) Raise(kMissingRootInfo);
    NodeNumber node = kRootNode;
    for (std::size_t i = 1; i < path.items.size(); ++i) {
        if (index_.TypeOf(node) != ZT_NODE_GROUP) Raise(kIntermediateNodeNotGroupNode, i - 1);
        node = Child(bytes, node, path.items[i], i);
    }
    return node;
}

OutlineIndex::Children Outline::ChildrenOf(NodeNumber node) const {
    if (index_.TypeOf(node) != ZT_NODE_GROUP) Raise(kLastNodeNotGroupNode);
    return index_.ChildrenOf(node);
}

NodeNumber Outline::Child(const DocumentBytes& bytes, NodeNumber group, const ZT_DataPathItem& item,
                          std::size_t itemNumber) const {
    if (item.index < 0 && item.matchName.empty()) Raise(kMissingBothIndexAndMatchName, itemNumber);
    const OutlineIndex::Children siblings = index_.ChildrenOf(group);
    TextWindow window(bytes, kFirstTry);
    if (item.index >= 0) {
        if (static_cast<std::uint64_t>(item.index) >= siblings.count) {
            Raise(kInvalidIndex, siblings.count, itemNumber, item.index);
        }
        const NodeNumber node = siblings.first + static_cast<std::uint64_t>(item.index);
        if (item.matchName.empty()) return node;
        const std::string name = MatchNameOf(window, node);
        if (item.matchName != name) {
            Raise(kMatchNameNotMatching, Excerpt(name), item.index, itemNumber, item.matchName);
        }
        return node;
    }
    const auto table = names_->TableOf(group, [&] {
        auto made = std::make_shared<NameTable>(siblings.count);
        TextWindow along(bytes, kSiblingsAtOnce);
        for (std::uint64_t i = 0; i < siblings.count; ++i) {
            const std::string name = MatchNameOf(along, siblings.first + i);
            made->Add(names_->HashOf(name), static_cast<std::uint32_t>(i));
        }
        return made;
    });
    NodeNumber found = kRootNode;
    const bool isThere = table->Find(names_->HashOf(item.matchName), [&](std::uint32_t child) {
        found = siblings.first + child;
        return MatchNameOf(window, found) == item.matchName;
    });
    if (!isThere) Raise(kMatchNameNotFound, item.matchName);
    return found;
}

std::string Outline::MatchNameOf(TextWindow& window, NodeNumber node) const {
    const std::uint64_t offset = index_.OffsetOf(node);
    const bool isGroup = index_.TypeOf(node) == ZT_NODE_GROUP;
    for (std::size_t least = kFirstTry;; least = Longer(least, window)) {
        JsonCursor cursor(window.At(offset, least));
        RawString key;
        cursor.SkipWhiteSpace();
        for (bool goesOn = cursor.Skip('{'); goesOn; goesOn = cursor.Skip(',')) {
            cursor.SkipWhiteSpace();
            if (!cursor.TakeString(key)) break;
            cursor.SkipWhiteSpace();
            if (!cursor.Skip(':')) break;
            cursor.SkipWhiteSpace();
            RawString name;
            if (Is(key, words::kMatchName) && cursor.TakeString(name)) return name.Decoded();
            if (isGroup && !cursor.AtEnd() && cursor.Peek() == '[' && Is(key, words::kChildren)) {
                NodeValues values(window.bytes());  // the name comes after them
                Read(node, values);
                return std::string(TextOf(*FindMember(values.values(), words::kMatchName)));
            }
            cursor.SkipValue();
            cursor.SkipWhiteSpace();
        }
    }
}

void Outline::Read(NodeNumber node, NodeValues& values) const {
    if (node == kRootNode) return;
    values.type_ = index_.TypeOf(node);
    FindText(values, index_.OffsetOf(node),
             values.type_ == ZT_NODE_GROUP ? index_.OffsetAfterChildren(node) : std::nullopt);
    BuildValues(values);
}

SampleSet Outline::SampleSetOf(const DocumentBytes& bytes, std::uint64_t dynamicNumber) const {
    NodeValues values(bytes);
    values.type_ = ZT_NODE_DYNAMIC;
    FindText(values, index_.DynamicOffset(dynamicNumber), std::nullopt);
    BuildValues(values);
    return DescribeSampleSet(values.values());
}

void Outline::BuildValues(NodeValues& values) const {
    try {
        values.text_.BuildValues(values.bytes_, values.values_);
        ValueChecks checks(values.bytes_, 0, words::kDataOutline);
        const bool isSame = validator_->NodeHead(checks, values.values_) == values.type_;
        if (isSame && values.type_ != ZT_NODE_GROUP) validator_->NodeBody(checks, values.values_, values.type_);
        if (isSame) return;
    } catch (const ns_sensor::ZT_Exception& fault) {
        if (fault.code() == kMemoryNotAvailable.code) throw;
    }
    Raise(kCorruptFile);  // it was valid when the document was opened
}

void Outline::FindText(NodeValues& values, std::uint64_t offset, std::optional<std::uint64_t> continuation) {
    const bool isGroup = values.type_ == ZT_NODE_GROUP;
    const auto skipArray = [&](std::size_t begin) {
        JsonCursor cursor(values.bytes_, begin);
        cursor.SkipValue();
        return std::optional(cursor.Offset());
    };
    const auto stop = [](std::size_t) { return std::optional<std::size_t>(); };
    const auto find = [&](const NodeText::AfterChildren& after) {
        values.text_ = NodeText();
        JsonCursor cursor(values.bytes_);
        return values.text_.Find(cursor, after);
    };
    for (std::size_t least = kFirstTry;; least = Longer(least, values.window_)) {
        values.bytes_ = values.window_.At(offset, least);
        if (isGroup ? find(stop) : find(skipArray)) break;
    }
    if (!continuation) return;
    if (!values.text_.children()) Raise(kCorruptFile);
    // As if the group had no children.
    const std::string start = std::string(values.bytes_.substr(0, *values.text_.children())) + "[]";
    for (std::size_t least = kFirstTry;; least = Longer(least, values.window_)) {
        values.joined_ = start;
        values.joined_ += values.window_.At(*continuation, least);
        values.bytes_ = values.joined_;
        if (find(skipArray)) return;
    }
}

}  // namespace zentor
