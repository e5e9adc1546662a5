// The joints of a capture and what their channels stand for.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace zentor {

// What a number of each frame is, among the six that have a place in the document; kOther has none.
enum class Channel : std::uint8_t { kXposition, kYposition, kZposition, kXrotation, kYrotation, kZrotation, kOther };

// As they are written in documents.
inline constexpr std::array<const char*, 6> kChannelNames = {"Xposition", "Yposition", "Zposition",
                                                             "Xrotation", "Yrotation", "Zrotation"};

// The positions, or the rotations, of a joint: in the order in which they are declared.
struct ChannelGroup {
    std::vector<Channel> channels;
    std::vector<std::size_t> columns;  // of a frame
};

struct SkeletonNode {
    // An end site has an offset at most; one without has nothing.
    enum class Kind : std::uint8_t { kJoint, kEndSite, kEmptyEndSite };

    Kind kind = Kind::kJoint;
    std::string name;
    std::array<double, 3> offset{};
    ChannelGroup position;
    ChannelGroup rotation;
    std::vector<std::shared_ptr<SkeletonNode>> children;  // and end sites, in the order of the file
};

struct Skeleton {
    std::vector<std::shared_ptr<SkeletonNode>> roots;
    std::size_t columns = 0;  // numbers of a frame
};

}  // namespace zentor
