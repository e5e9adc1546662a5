#include "model/group.h"

#include "model/client_boundary.h"
#include "model/root.h"

namespace ZT_PLUGIN {

// Walks the attached children of a group, which must outlive it.
class AttachedChildren final : public ChildSource {
public:
    explicit AttachedChildren(const VkjsonGroupImpl& group) : group_(group) {}

    bool Next(Child& child) override {
        if (next_ == group_.order_.size()) return false;
        const auto [kind, index] = group_.order_[next_++];
        if (kind == VkjsonGroupImpl::ChildKind::kGroup) {
            child.group = group_.groupChildren_[index];
        } else {
            child.group = nullptr;
            child.node = group_.staticChildren_[index]->View();
        }
        return true;
    }

private:
    const VkjsonGroupImpl& group_;
    std::size_t next_ = 0;
};

VkjsonGroupImpl::VkjsonGroupImpl(std::uint64_t streamId, std::string_view matchName, std::string_view displayName)
    : VkjsonNodeImpl(streamId, matchName, displayName) {
    Publish(static_cast<ISharedObject*>(this));
    Publish(static_cast<IVkjsonGroup_v1*>(this));
}

namespace {

template <class Item>
bool HasRoomFor(std::vector<Item>& items, std::size_t more) noexcept {
    try {
        items.reserve(items.size() + more);
        return true;
    } catch (...) {
        return false;
    }
}

}  // namespace

VkjsonGroupImpl::~VkjsonGroupImpl() {
    // One after the other: a client may have nested groups deeper than the stack allows destructors to call each other.
    std::vector<Owner<VkjsonGroupImpl>> going = std::move(groupChildren_);
    while (!going.empty()) {
        const Owner<VkjsonGroupImpl> child = std::move(going.back());
        going.pop_back();
        child->parent_ = nullptr;
        if (!child->IsHeldOnce() || !HasRoomFor(going, child->groupChildren_.size())) continue;
        for (auto& grandchild : child->groupChildren_) {
            grandchild->parent_ = nullptr;
            going.push_back(std::move(grandchild));
        }
        child->groupChildren_.clear();
    }
}

std::unique_ptr<ChildSource> VkjsonGroupImpl::TakeChildren() {
    if (source_) return std::move(source_);
    return std::make_unique<AttachedChildren>(*this);
}

// Whether this group is `group` or lies below it.
bool VkjsonGroupImpl::IsWithin(const VkjsonGroupImpl& group) const {
    if (group.groupChildren_.empty()) return this == &group;
    const VkjsonGroupImpl* at = this;
    while (at != nullptr && at != &group) at = at->parent_;
    return at != nullptr;
}

// Adds a child to the list of its kind and to the order of all, or to neither.
template <class Node>
void VkjsonGroupImpl::Append(std::vector<Owner<Node>>& children, Owner<Node> child, ChildKind kind) {
    order_.emplace_back(kind, children.size());
    try {
        children.push_back(std::move(child));
    } catch (...) {
        order_.pop_back();
        throw;
    }
}

void VkjsonGroupImpl::AttachStatic(const void* address, ZT_ErrorRecord* error) noexcept {
    RunForClient(error, [&] {
        if (address == nullptr) throw ZT_PluginException(ZT_INVALID_STATIC_NODE);
        auto* child = FindLive<VkjsonStaticDataImpl>(address);
        if (child == nullptr) throw ZT_PluginException(ZT_FOREIGN_OBJECT);
        if (child->IsAttached() || child->StreamId() != StreamId()) throw ZT_PluginException(ZT_INVALID_STATIC_NODE);
        Append(staticChildren_, MakeOwner(child), ChildKind::kStatic);
        child->MarkAttached();
    });
}

void VkjsonGroupImpl::AttachGroup(const void* address, ZT_ErrorRecord* error) noexcept {
    RunForClient(error, [&] {
        if (address == nullptr) throw ZT_PluginException(ZT_INVALID_GROUP);
        auto* child = FindLive<VkjsonGroupImpl>(address);
        if (child == nullptr) throw ZT_PluginException(ZT_FOREIGN_OBJECT);
        const bool isRoot = dynamic_cast<VkjsonRootImpl*>(child) != nullptr;
        if (isRoot || child->IsAttached() || child->StreamId() != StreamId() || IsWithin(*child)) {
            throw ZT_PluginException(ZT_INVALID_GROUP);
        }
        Append(groupChildren_, MakeOwner(child), ChildKind::kGroup);
        child->MarkAttached();
        child->parent_ = this;
    });
}

void VkjsonGroupImpl::AddStaticDataShared(ISharedObject* child, ZT_ErrorRecord* error) noexcept {
    AttachStatic(child, error);
}

void VkjsonGroupImpl::AddStaticData(IVkjsonStaticData_v1* child, ZT_ErrorRecord* error) noexcept {
    AttachStatic(child, error);
}

void VkjsonGroupImpl::AddGroupShared(ISharedObject* child, ZT_ErrorRecord* error) noexcept {
    AttachGroup(child, error);
}

void VkjsonGroupImpl::AddGroup(IVkjsonGroup_v1* child, ZT_ErrorRecord* error) noexcept { AttachGroup(child, error); }

// No object can be a dynamic node yet, so whatever is not null is foreign.
void VkjsonGroupImpl::AddDynamicDataShared(ISharedObject* child, ZT_ErrorRecord* error) noexcept {
    RunForClient(error,
                 [&] { throw ZT_PluginException(child == nullptr ? ZT_INVALID_DYNAMIC_NODE : ZT_FOREIGN_OBJECT); });
}

void VkjsonGroupImpl::AddDynamicData(IVkjsonDynamicData_v1* child, ZT_ErrorRecord* error) noexcept {
    RunForClient(error,
                 [&] { throw ZT_PluginException(child == nullptr ? ZT_INVALID_DYNAMIC_NODE : ZT_FOREIGN_OBJECT); });
}

}  // namespace ZT_PLUGIN
