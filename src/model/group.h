// Groups.
#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "model/child_source.h"
#include "model/dynamic_data.h"
#include "model/include/nodes.h"
#include "model/node_impl.h"
#include "model/static_data.h"

namespace ZT_PLUGIN {

// The library's view of a group.
class IVkjsonGroup_I : public virtual ISharedObject_I {
public:
    virtual std::string_view MatchName() const = 0;
    virtual std::string_view DisplayName() const = 0;
    // The children in order: the attached ones, or what the child source gives. A source is given out once.
    virtual std::unique_ptr<ChildSource> TakeChildren() = 0;
};

class VkjsonGroupImpl : public virtual IVkjsonGroup_I, public IVkjsonGroup_v1, public VkjsonNodeImpl {
public:
    VkjsonGroupImpl(std::uint64_t streamId, std::string_view matchName, std::string_view displayName);

    void AddDynamicDataShared(ISharedObject* child, ZT_ErrorRecord* error) noexcept override;
    void AddStaticDataShared(ISharedObject* child, ZT_ErrorRecord* error) noexcept override;
    void AddGroupShared(ISharedObject* child, ZT_ErrorRecord* error) noexcept override;
    ISharedObject* GetSharedObject() noexcept override { return this; }
    void AddDynamicData(IVkjsonDynamicData_v1* child, ZT_ErrorRecord* error) noexcept override;
    void AddStaticData(IVkjsonStaticData_v1* child, ZT_ErrorRecord* error) noexcept override;
    void AddGroup(IVkjsonGroup_v1* child, ZT_ErrorRecord* error) noexcept override;

    std::string_view MatchName() const override { return MatchNameText(); }
    std::string_view DisplayName() const override { return DisplayNameText(); }
    std::unique_ptr<ChildSource> TakeChildren() override;

    // The group that it is attached to; null when there is none any more.
    const VkjsonGroupImpl* Parent() const { return parent_; }
    // Writes the samples of all dynamic nodes below that have not written theirs. Recursion ends at the limit of
    // groups.
    void WriteSamplesBelow();

    // Gives the group a source in place of attached children.
    void SetChildSource(std::unique_ptr<ChildSource> source) { source_ = std::move(source); }

protected:
    ~VkjsonGroupImpl() override;

private:
    friend class AttachedChildren;
    class NamesInUse;
    enum class ChildKind { kGroup = 0, kDynamic = 1, kStatic = 2 };

    template <class Node>
    void Append(std::vector<Owner<Node>>& children, Owner<Node> child, ChildKind kind);
    void AttachDynamic(const void* address, ZT_ErrorRecord* error) noexcept;
    void AttachStatic(const void* address, ZT_ErrorRecord* error) noexcept;
    void AttachGroup(const void* address, ZT_ErrorRecord* error) noexcept;
    bool CanTake(const VkjsonNodeImpl& child) const;
    bool IsWithin(const VkjsonGroupImpl& group) const;
    bool HasRoomFor(const VkjsonGroupImpl& group) const;
    void CountLevelsOf(const VkjsonGroupImpl& child);

    std::vector<Owner<VkjsonDynamicDataImpl>> dynamicChildren_;
    std::vector<Owner<VkjsonStaticDataImpl>> staticChildren_;
    std::vector<Owner<VkjsonGroupImpl>> groupChildren_;
    std::vector<std::pair<ChildKind, std::size_t>> order_;
    std::unique_ptr<ChildSource> source_;
    VkjsonGroupImpl* parent_ = nullptr;
    std::size_t levels_ = 1;  // of groups below each other, this one included
};

}  // namespace ZT_PLUGIN
