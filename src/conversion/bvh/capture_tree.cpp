#include "conversion/bvh/capture_tree.h"

#include <string>

namespace zentor {

namespace {

using ZT_PLUGIN::VkjsonGroupImpl;

class TreeBuilder {
public:
    explicit TreeBuilder(const ZT_ConverterHandlerBase& converter) : converter_(converter) {}

    // Recursion ends at the limit of groups, which the reader of the hierarchy keeps.
    void AddJoint(VkjsonGroupImpl& parent, const SkeletonNode& joint) {
        const auto group = NativeCreateGroup(&converter_, NextName(), joint.name);
        CallModel([&](auto* error) { parent.AddGroupShared(group->GetSharedObject(), error); });
        AddOffset(*group, "OFFSET", joint.offset);
        AddTrack(*group, "POSITION", joint.position);
        AddTrack(*group, "ROTATION", joint.rotation);
        for (const auto& child : joint.children) {
            if (child->kind == SkeletonNode::Kind::kJoint) {
                AddJoint(*group, *child);
            } else if (child->kind == SkeletonNode::Kind::kEndSite && converter_.Info().form.IsFaithful()) {
                AddOffset(*group, "End Site", child->offset);
            }
        }
    }

    std::vector<CaptureTrack> TakeTracks() { return std::move(tracks_); }

private:
    std::string NextName() { return "node" + std::to_string(counter_++); }

    void AddOffset(VkjsonGroupImpl& group, const char* displayName, const std::array<double, 3>& offset) {
        const auto node = NativeCreateStaticNumArr(&converter_, NextName(), displayName, offset, {});
        CallModel([&](auto* error) { group.AddStaticDataShared(node->GetSharedObject(), error); });
    }

    void AddTrack(VkjsonGroupImpl& group, const char* displayName, const ChannelGroup& channels) {
        if (channels.channels.empty()) return;
        const std::string name = NextName();
        DynamicArrayDescription description;
        description.matchName = name;
        description.displayName = displayName;
        description.sampleSetId = name;
        description.dimensions = channels.channels.size();
        for (const Channel channel : channels.channels) {
            description.properties.displayNames.push_back(kChannelNames[static_cast<std::size_t>(channel)]);
        }
        auto node = NativeCreateDynamicNumArr(&converter_, description);
        CallModel([&](auto* error) { group.AddDynamicDataShared(node->GetSharedObject(), error); });
        tracks_.push_back({std::move(node), channels.columns});
    }

    const ZT_ConverterHandlerBase& converter_;
    std::uint64_t counter_ = 0;
    std::vector<CaptureTrack> tracks_;
};

}  // namespace

std::vector<CaptureTrack> BuildCaptureTree(const ZT_ConverterHandlerBase& converter, ZT_PLUGIN::VkjsonRootImpl& root,
                                           const Skeleton& skeleton) {
    TreeBuilder builder(converter);
    for (const auto& joint : skeleton.roots) builder.AddJoint(root, *joint);
    return builder.TakeTracks();
}

}  // namespace zentor
