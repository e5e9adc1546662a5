#include "reader/outline_index.h"

#include <algorithm>

namespace zentor {

ZT_NodeType OutlineIndex::TypeOf(NodeNumber node) const {
    return node == kRootNode ? ZT_NODE_GROUP : static_cast<ZT_NodeType>(nodes_[node] >> kTypeShift);
}

std::uint64_t OutlineIndex::OffsetOf(NodeNumber node) const {
    switch (TypeOf(node)) {
        case ZT_NODE_GROUP:
            return groups_[RestOf(node)].offset;
        case ZT_NODE_DYNAMIC:
            return dynamics_[RestOf(node)];
        default:
            return RestOf(node);
    }
}

OutlineIndex::Children OutlineIndex::ChildrenOf(NodeNumber group) const {
    return group == kRootNode ? root_ : groups_[RestOf(group)].children;
}

std::optional<std::uint64_t> OutlineIndex::OffsetAfterChildren(NodeNumber group) const {
    const std::uint64_t number = RestOf(group);
    const auto found = std::lower_bound(continued_.begin(), continued_.end(), std::pair(number, std::uint64_t{0}));
    if (found == continued_.end() || found->first != number) return std::nullopt;
    return found->second;
}

void OutlineIndexBuilder::AddDynamic(std::uint64_t offset) {
    Add(ZT_NODE_DYNAMIC, index_.dynamics_.size());
    index_.dynamics_.push_back(offset);
}

void OutlineIndexBuilder::BeginGroup(std::uint64_t offset) {
    const std::uint64_t number = index_.groups_.size();
    Add(ZT_NODE_GROUP, number);
    index_.groups_.push_back({offset, {}});
    open_.push_back({number, pending_.size()});
}

void OutlineIndexBuilder::EndGroup(std::optional<std::uint64_t> continuation) {
    const OpenGroup group = open_.back();
    open_.pop_back();
    index_.groups_[group.number].children = TakePending(group.firstPending);
    if (continuation) index_.continued_.emplace_back(group.number, *continuation);
}

OutlineIndex::Children OutlineIndexBuilder::TakePending(std::size_t first) {
    const OutlineIndex::Children children{index_.nodes_.size(), pending_.size() - first};
    if (index_.nodes_.empty() && first == 0) {  // an outline without groups needs no copy
        index_.nodes_.swap(pending_);
        return children;
    }
    index_.nodes_.insert(index_.nodes_.end(), pending_.begin() + static_cast<std::ptrdiff_t>(first), pending_.end());
    pending_.resize(first);
    return children;
}

OutlineIndex OutlineIndexBuilder::Finish() {
    index_.root_ = TakePending(0);
    pending_ = {};
    std::sort(index_.continued_.begin(), index_.continued_.end());  // inner groups end before outer ones
    index_.nodes_.shrink_to_fit();
    index_.groups_.shrink_to_fit();
    index_.dynamics_.shrink_to_fit();
    return std::move(index_);
}

}  // namespace zentor
