#include "model/group.h"

#include "format/limits.h"
#include "model/client_boundary.h"
#include "model/root.h"

namespace ZT_PLUGIN {

namespace {

// No document holds an array without elements.
void CheckElements(const StaticNodeView& node) {
    const bool isEmpty = node.kind == StaticKind::kNumberArray && node.array->values.empty();
    if (isEmpty) throw ZT_PluginException(ZT_INVALID_STATIC_NODE);
}

}  // namespace

// Walks the attached children of a group, which must outlive it.
class AttachedChildren final : public ChildSource {
public:
    explicit AttachedChildren(const VkjsonGroupImpl& group) : group_(group) {}

    bool Next(Child& child) override {
        if (next_ == group_.order_.size()) return false;
        const auto [kind, index] = group_.order_[next_++];
        child.group = nullptr;
        child.dynamic.reset();
        switch (kind) {
            case VkjsonGroupImpl::ChildKind::kGroup:
                child.group = group_.groupChildren_[index];
                break;
            case VkjsonGroupImpl::ChildKind::kDynamic:
                child.dynamic = group_.dynamicChildren_[index]->View();
                break;
            case VkjsonGroupImpl::ChildKind::kStatic:
                child.node = group_.staticChildren_[index]->View();
                CheckElements(child.node);
                break;
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

// Groups end within each other: no deeper than the limit.
VkjsonGroupImpl::~VkjsonGroupImpl() {
    for (const auto& child : dynamicChildren_) child->SetParent(nullptr);
    for (const auto& child : groupChildren_) child->parent_ = nullptr;
}

std::unique_ptr<ChildSource> VkjsonGroupImpl::TakeChildren() {
    if (source_) return std::move(source_);
    return std::make_unique<AttachedChildren>(*this);
}

// Whether a node may be attached that is one of this library's. Code ZT_STREAM_NOT_OPEN when the conversion is over.
bool VkjsonGroupImpl::CanTake(const VkjsonNodeImpl& child) const {
    // What comes after the end of the document would be missing from it.
    return Stream().Writer().IsOpen() && !child.IsAttached() && child.StreamId() == StreamId();
}

// Whether this group is `group` or lies below it.
bool VkjsonGroupImpl::IsWithin(const VkjsonGroupImpl& group) const {
    const VkjsonGroupImpl* at = this;
    while (at != nullptr && at != &group) at = at->parent_;
    return at != nullptr;
}

// Whether the groups of `group` would be within the limit here, in whatever order the tree is put together: the
// uppermost group counts as the root, so one that is attached itself some day is asked again then.
bool VkjsonGroupImpl::HasRoomFor(const VkjsonGroupImpl& group) const {
    std::size_t levels = group.levels_;
    for (const VkjsonGroupImpl* at = this; at != nullptr; at = at->parent_) ++levels;
    return levels <= zentor::kGroupLimit + 1;
}

void VkjsonGroupImpl::CountLevelsOf(const VkjsonGroupImpl& child) {
    std::size_t levels = child.levels_ + 1;
    for (VkjsonGroupImpl* at = this; at != nullptr && at->levels_ < levels; at = at->parent_) at->levels_ = levels++;
}

void VkjsonGroupImpl::WriteSamplesBelow() {
    for (const auto& child : dynamicChildren_) child->WriteAllSamples();
    for (const auto& child : groupChildren_) child->WriteSamplesBelow();
}

// Takes the names of a child for the document, or fails with `code` when one is taken; names are given back when the
// child cannot be attached after all.
class VkjsonGroupImpl::NamesInUse {
public:
    NamesInUse(StreamState& stream, const std::string& matchName, const std::string* sampleSetId, std::uint32_t code)
        : stream_(stream) {
        if (!stream_.matchNames.insert(matchName).second) throw ZT_PluginException(code);
        matchName_ = &matchName;
        if (sampleSetId == nullptr) return;
        if (!stream_.sampleSetIds.insert(*sampleSetId).second) {
            stream_.matchNames.erase(matchName);
            throw ZT_PluginException(code);
        }
        sampleSetId_ = sampleSetId;
    }
    ~NamesInUse() {
        if (matchName_ != nullptr) stream_.matchNames.erase(*matchName_);
        if (sampleSetId_ != nullptr) stream_.sampleSetIds.erase(*sampleSetId_);
    }
    NamesInUse(const NamesInUse&) = delete;
    NamesInUse& operator=(const NamesInUse&) = delete;

    void Keep() { matchName_ = sampleSetId_ = nullptr; }

private:
    StreamState& stream_;
    const std::string* matchName_ = nullptr;
    const std::string* sampleSetId_ = nullptr;
};

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

void VkjsonGroupImpl::AttachDynamic(const void* address, ZT_ErrorRecord* error) noexcept {
    RunForClient(error, [&] {
        if (address == nullptr) throw ZT_PluginException(ZT_INVALID_DYNAMIC_NODE);
        auto* child = FindLive<VkjsonDynamicDataImpl>(address);
        if (child == nullptr) throw ZT_PluginException(ZT_FOREIGN_OBJECT);
        if (!CanTake(*child) || !child->IsInitialized()) throw ZT_PluginException(ZT_INVALID_DYNAMIC_NODE);
        NamesInUse names(Stream(), child->MatchNameText(), &child->SampleSetIdText(), ZT_INVALID_DYNAMIC_NODE);
        Append(dynamicChildren_, MakeOwner(child), ChildKind::kDynamic);
        names.Keep();
        child->MarkAttached();
        child->SetParent(this);
    });
}

void VkjsonGroupImpl::AttachStatic(const void* address, ZT_ErrorRecord* error) noexcept {
    RunForClient(error, [&] {
        if (address == nullptr) throw ZT_PluginException(ZT_INVALID_STATIC_NODE);
        auto* child = FindLive<VkjsonStaticDataImpl>(address);
        if (child == nullptr) throw ZT_PluginException(ZT_FOREIGN_OBJECT);
        if (!CanTake(*child)) throw ZT_PluginException(ZT_INVALID_STATIC_NODE);
        NamesInUse names(Stream(), child->MatchNameText(), nullptr, ZT_INVALID_STATIC_NODE);
        Append(staticChildren_, MakeOwner(child), ChildKind::kStatic);
        names.Keep();
        child->MarkAttached();
    });
}

void VkjsonGroupImpl::AttachGroup(const void* address, ZT_ErrorRecord* error) noexcept {
    RunForClient(error, [&] {
        if (address == nullptr) throw ZT_PluginException(ZT_INVALID_GROUP);
        auto* child = FindLive<VkjsonGroupImpl>(address);
        if (child == nullptr) throw ZT_PluginException(ZT_FOREIGN_OBJECT);
        const bool isRoot = dynamic_cast<VkjsonRootImpl*>(child) != nullptr;
        if (isRoot || !CanTake(*child) || IsWithin(*child) || !HasRoomFor(*child)) {
            throw ZT_PluginException(ZT_INVALID_GROUP);
        }
        NamesInUse names(Stream(), child->MatchNameText(), nullptr, ZT_INVALID_GROUP);
        Append(groupChildren_, MakeOwner(child), ChildKind::kGroup);
        names.Keep();
        child->MarkAttached();
        child->parent_ = this;
        CountLevelsOf(*child);
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

void VkjsonGroupImpl::AddDynamicDataShared(ISharedObject* child, ZT_ErrorRecord* error) noexcept {
    AttachDynamic(child, error);
}

void VkjsonGroupImpl::AddDynamicData(IVkjsonDynamicData_v1* child, ZT_ErrorRecord* error) noexcept {
    AttachDynamic(child, error);
}

}  // namespace ZT_PLUGIN
