#include "conversion/bvh/bvh_converter.h"

#include <span>

#include "conversion/bvh/capture_tree.h"
#include "conversion/bvh/frame_reader.h"
#include "conversion/bvh/hierarchy.h"
#include "conversion/bvh/motion_header.h"
#include "conversion/identifiers.h"
#include "model/client_boundary.h"

namespace zentor {

namespace {

using ZT_PLUGIN::NumberSample;
using ZT_PLUGIN::SampleTime;

// Gives the numbers of each frame to the arrays that they belong to; returns how many frames there are.
std::uint64_t AddFrames(CaptureInput& input, FrameReader& frames, const FrameRate& rate,
                        std::vector<CaptureTrack>& tracks) {
    char text[kWidestTimeCode];
    const std::int64_t framesPerDay = FramesPerDay(rate);
    std::vector<NumberSample> elements;
    std::int64_t frame = 0;
    for (; frames.Next(); ++frame) {
        if (frame == framesPerDay) input.Refuse();  // there are no time codes for more
        const char* const end = FormatTimeCode(frame, rate, text);
        const SampleTime time{{text, static_cast<std::size_t>(end - text)}, {frame, {}}};
        for (CaptureTrack& track : tracks) {
            const std::size_t first = track.columns.front();
            const std::size_t count = track.columns.size();
            if (track.columns.back() - first == count - 1) {  // nearly always side by side
                track.node->AddTexts(time, std::span(frames.Numbers()).subspan(first, count));
                continue;
            }
            elements.clear();
            for (const std::size_t column : track.columns) elements.push_back(frames.Numbers()[column]);
            track.node->AddTexts(time, elements);
        }
    }
    return static_cast<std::uint64_t>(frame);
}

}  // namespace

bool BVHConverter::Convert() {
    CaptureInput input(Info().inputPath);
    LossWatch watch(Info(), {}, -1);
    const Skeleton skeleton = ReadHierarchy(input, Info().form.numbers, watch);
    const MotionHeader motion = ReadMotionHeader(input);
    const auto root = NativeCreateRoot(this, Info().streamId);
    CallModel([&](auto* error) { root->SetCreator(identifiers::kBvh, error); });
    CallModel([&](auto* error) { root->SetTimecodeInfo(0, motion.rate.numerator, motion.rate.denominator, error); });
    std::vector<CaptureTrack> tracks = BuildCaptureTree(*this, *root, skeleton);
    FrameReader frames(input, skeleton.columns, motion.frames, Info().form.numbers, watch);
    const std::uint64_t found = AddFrames(input, frames, motion.rate, tracks);
    if (found < motion.frames) AddNotice(ZT_NOTICE_FRAMES, input.Here(), motion.frames - found);
    for (CaptureTrack& track : tracks) {
        CallModel([&](auto* error) { track.node->WriteSamples(error); });
        track.node = nullptr;  // the outline keeps the node
    }
    std::uint32_t written = 0;
    CallModel([&](auto* error) { written = root->WriteDocument(error); });
    return written != 0;
}

}  // namespace zentor
