#include "conversion/bvh/hierarchy.h"

#include <algorithm>
#include <charconv>

#include "format/limits.h"

namespace zentor {

namespace {

class HierarchyReader {
public:
    HierarchyReader(CaptureInput& input, NumberForm form, LossWatch& watch)
        : input_(input), form_(form), watch_(watch) {}

    Skeleton Read() {
        if (!TakeKeyword("hierarchy")) input_.Refuse();
        while (TakeKeyword("root")) skeleton_.roots.push_back(ReadJoint());
        if (skeleton_.roots.empty()) input_.Refuse();
        return std::move(skeleton_);
    }

private:
    bool TakeKeyword(std::string_view lower) {
        const std::string_view word = input_.PeekWord();
        if (!IsWord(word, lower)) return false;
        input_.Advance(word.size());
        return true;
    }

    // Recursion ends at the limit of groups.
    std::shared_ptr<SkeletonNode> ReadJoint() {
        if (++depth_ > kGroupLimit) input_.Refuse();
        auto joint = std::make_shared<SkeletonNode>();
        input_.SkipBlanks();
        const InputPlace place = input_.Here();
        joint->name = input_.TakeName();
        watch_.CheckText(joint->name, place);
        if (!TakeKeyword("{")) input_.Refuse();
        while (!TakeKeyword("}")) {
            if (TakeKeyword("offset")) {
                ReadOffset(joint->offset);
            } else if (TakeKeyword("channels")) {
                ReadChannels(*joint);
            } else if (TakeKeyword("joint")) {
                joint->children.push_back(ReadJoint());
            } else if (TakeKeyword("end") || TakeKeyword("endsite")) {
                TakeKeyword("site");
                const InputPlace site = input_.Here();
                joint->children.push_back(ReadEndSite());
                if (form_ == NumberForm::kSixteenDigits) AddNotice(ZT_NOTICE_END_SITES, site);
            } else {
                input_.Refuse();
            }
        }
        --depth_;
        return joint;
    }

    // It marks where the last bone ends; what is called its channels are columns and no more.
    std::shared_ptr<SkeletonNode> ReadEndSite() {
        auto site = std::make_shared<SkeletonNode>();
        site->kind = SkeletonNode::Kind::kEmptyEndSite;
        SkeletonNode channels;
        input_.TakeName();
        if (!TakeKeyword("{")) input_.Refuse();
        while (!TakeKeyword("}")) {
            if (TakeKeyword("offset")) {
                ReadOffset(site->offset);
                site->kind = SkeletonNode::Kind::kEndSite;
            } else if (TakeKeyword("channels")) {
                ReadChannels(channels);
            } else {
                input_.Refuse();
            }
        }
        return site;
    }

    void ReadOffset(std::array<double, 3>& offset) {
        for (double& number : offset) {
            const std::string_view word = input_.PeekWord();
            const char* const end = word.data() + word.size();
            if (ParseNumber(word.data(), end, number) != end || word.empty() || !IsWritable(number, form_))
                input_.Refuse();
            watch_.CheckNumber(number, word.size(), input_.Here());
            input_.Advance(word.size());
        }
    }

    void ReadChannels(SkeletonNode& joint) {
        const std::string_view word = input_.PeekWord();
        std::uint64_t count = 0;
        const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), count);
        if (error != std::errc() || end != word.data() + word.size()) input_.Refuse();
        input_.Advance(word.size());
        for (; count != 0; --count) ReadChannel(joint);
    }

    void ReadChannel(SkeletonNode& joint) {
        const std::string_view name = input_.PeekWord();
        if (name.empty() || IsKeyword(name)) input_.Refuse();
        const auto found = std::find_if(kLowerNames.begin(), kLowerNames.end(),
                                        [name](std::string_view lower) { return IsWord(name, lower); });
        const InputPlace place = input_.Here();
        input_.Advance(name.size());
        const std::size_t column = skeleton_.columns++;
        if (found == kLowerNames.end()) {
            AddNotice(ZT_NOTICE_CHANNELS, place);
            return;
        }
        const auto channel = static_cast<Channel>(found - kLowerNames.begin());
        ChannelGroup& group = channel < Channel::kXrotation ? joint.position : joint.rotation;
        const auto& known = group.channels;
        if (std::find(known.begin(), known.end(), channel) != known.end()) {  // there it is a second time
            AddNotice(ZT_NOTICE_CHANNELS, place);
            return;
        }
        group.channels.push_back(channel);
        group.columns.push_back(column);
    }

    // A count of channels may be too high.
    static bool IsKeyword(std::string_view word) {
        constexpr std::string_view kKeywords[] = {"{",   "}",       "offset", "channels", "joint",
                                                  "end", "endsite", "root",   "motion",   "frames:"};
        return std::any_of(std::begin(kKeywords), std::end(kKeywords),
                           [word](std::string_view keyword) { return IsWord(word, keyword); });
    }

    static constexpr std::array<std::string_view, 6> kLowerNames = {"xposition", "yposition", "zposition",
                                                                    "xrotation", "yrotation", "zrotation"};

    CaptureInput& input_;
    NumberForm form_;
    LossWatch& watch_;
    Skeleton skeleton_;
    std::size_t depth_ = 0;
};

}  // namespace

Skeleton ReadHierarchy(CaptureInput& input, NumberForm form, LossWatch& watch) {
    return HierarchyReader(input, form, watch).Read();
}

}  // namespace zentor
