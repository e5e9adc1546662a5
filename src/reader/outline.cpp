#include "reader/outline.h"

#include <functional>

#include "errors/raise.h"
#include "reader/schema_words.h"

namespace zentor {

namespace {

bool IsRoot(const ZT_DataPathItem& item) {
    return item.index == -1 && (item.matchName.empty() || item.matchName == words::kDataOutline);
}

// Whether a node is an element of the array `siblings`.
bool IsAmong(const JsonValue* node, const JsonValue& siblings) {
    const std::less<const JsonValue*> before;
    return !before(node, siblings.Begin()) && before(node, siblings.End());
}

}  // namespace

ZT_NodeType TypeOf(const JsonValue& node) {
    const std::string_view type = TextOf(*FindMember(node, words::kObjectType));
    if (type == words::kDataGroup) return ZT_NODE_GROUP;
    return type == words::kDataDynamic ? ZT_NODE_DYNAMIC : ZT_NODE_STATIC;
}

const JsonValue* Outline::FindNode(const ZT_DataPath& path) const {
    if (path.items.empty() || !IsRoot(path.items.front())) Raise(kMissingRootInfo);
    const JsonValue* node = nullptr;
    for (std::size_t i = 1; i < path.items.size(); ++i) {
        if (node != nullptr && TypeOf(*node) != ZT_NODE_GROUP) Raise(kIntermediateNodeNotGroupNode, i - 1);
        node = &Child(ChildrenOf(node), path.items[i], i);
    }
    return node;
}

const JsonValue& Outline::ChildrenOf(const JsonValue* node) const {
    if (node == nullptr) return nodes_;
    if (TypeOf(*node) != ZT_NODE_GROUP) Raise(kLastNodeNotGroupNode);
    return *FindMember(*node, words::kChildren);
}

const JsonValue& Outline::Child(const JsonValue& siblings, const ZT_DataPathItem& item, std::size_t itemNumber) const {
    if (item.index < 0 && item.matchName.empty()) Raise(kMissingBothIndexAndMatchName, itemNumber);
    if (item.index >= 0) {
        if (static_cast<std::uint64_t>(item.index) >= siblings.Size()) {
            Raise(kInvalidIndex, siblings.Size(), itemNumber, item.index);
        }
        const JsonValue& node = siblings[static_cast<JsonSize>(item.index)];
        const std::string_view name = TextOf(*FindMember(node, words::kMatchName));
        if (!item.matchName.empty() && item.matchName != name) {
            Raise(kMatchNameNotMatching, Excerpt(name), item.index, itemNumber, item.matchName);
        }
        return node;
    }
    // Match names are unique in the whole outline.
    const auto found = byName_.find(std::string_view(item.matchName));
    if (found == byName_.end() || !IsAmong(*found, siblings)) Raise(kMatchNameNotFound, item.matchName);
    return **found;
}

}  // namespace zentor
