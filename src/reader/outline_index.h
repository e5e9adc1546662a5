// Where the nodes of an outline are in a document: all that is kept of an outline.
#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

#include "zentor/records.h"

namespace zentor {

// The place of a node in the index; the children of a group stand side by side.
using NodeNumber = std::uint64_t;
inline constexpr NodeNumber kRootNode = std::numeric_limits<NodeNumber>::max();

class OutlineIndex {
public:
    struct Children {
        NodeNumber first = 0;
        std::uint64_t count = 0;
    };

    // The root counts as a group.
    ZT_NodeType TypeOf(NodeNumber node) const;
    // Where its text begins, in bytes; not of the root.
    std::uint64_t OffsetOf(NodeNumber node) const;
    // Of a group or the root.
    Children ChildrenOf(NodeNumber group) const;
    // Where the text of a group goes on after its children; nothing where only its end follows.
    std::optional<std::uint64_t> OffsetAfterChildren(NodeNumber group) const;
    // A dynamic node's number among its kind, in the order of the outline.
    std::uint64_t DynamicNumber(NodeNumber node) const { return RestOf(node); }
    std::uint64_t DynamicCount() const { return dynamics_.size(); }
    std::uint64_t DynamicOffset(std::uint64_t number) const { return dynamics_[number]; }

private:
    friend class OutlineIndexBuilder;

    struct Group {
        std::uint64_t offset;
        Children children;
    };

    std::uint64_t RestOf(NodeNumber node) const { return nodes_[node] & kRest; }

    // The type in the highest bits; the rest is a number among groups or dynamic nodes, or the offset of a static node.
    static constexpr int kTypeShift = 62;
    static constexpr std::uint64_t kRest = (std::uint64_t{1} << kTypeShift) - 1;

    std::vector<std::uint64_t> nodes_;
    std::vector<Group> groups_;
    std::vector<std::uint64_t> dynamics_;                             // offsets
    std::vector<std::pair<std::uint64_t, std::uint64_t>> continued_;  // groups, by number, and where they go on
    Children root_;
};

// Takes the nodes in the order of the outline.
class OutlineIndexBuilder {
public:
    void AddStatic(std::uint64_t offset) { Add(ZT_NODE_STATIC, offset); }
    void AddDynamic(std::uint64_t offset);
    // What is added up to EndGroup are its children.
    void BeginGroup(std::uint64_t offset);
    // `continuation`: where the text of the group goes on, if something follows the children.
    void EndGroup(std::optional<std::uint64_t> continuation = std::nullopt);
    // Ends the root.
    OutlineIndex Finish();

private:
    struct OpenGroup {
        std::uint64_t number;
        std::size_t firstPending;
    };

    void Add(ZT_NodeType type, std::uint64_t rest) {
        pending_.push_back(std::uint64_t{type} << OutlineIndex::kTypeShift | rest);
    }
    OutlineIndex::Children TakePending(std::size_t first);

    OutlineIndex index_;
    std::vector<std::uint64_t> pending_;  // the children of open groups, until these end
    std::vector<OpenGroup> open_;
};

}  // namespace zentor
