// Compares a converted capture with the capture: how many samples each node has, and the numbers of a hundred frames
// and of the last one. The capture is one that the generator made.
#include <algorithm>
#include <charconv>
#include <cinttypes>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "arguments.h"
#include "host.h"
#include "zentor/records.h"

namespace {

constexpr std::uint32_t kFramesPerSecond = 120;
constexpr std::uint64_t kCheckedFrames = 100;
// Documents keep 16 significant digits.
constexpr double kPrecision = 1e-15;

[[noreturn]] void Differ(const std::string& place) {
    std::fprintf(stderr, "the document differs from the capture: %s\n", place.c_str());
    std::exit(EXIT_FAILURE);
}

void Require(ZT_Result result) {
    if (result != ZT_OK) std::exit(EXIT_FAILURE);
}

// The paths of the dynamic nodes in the order of the outline, which is that of the numbers in a line.
void CollectTracks(ISensorFileHandler* handler, const std::string& group, std::vector<std::string>& tracks) {
    ZT_GroupChildren children;
    Require(handler->GetGroupChildren(group.c_str(), &children));
    for (const ZT_DataPath& child : children.paths) {
        const std::string path = child.ToString();
        ZT_GroupChildInfo info;
        Require(handler->GetGroupChildInfo(path.c_str(), &info));
        if (info.nodeType == ZT_NODE_DYNAMIC) tracks.push_back(path);
        if (info.nodeType == ZT_NODE_GROUP) CollectTracks(handler, path, tracks);
    }
}

std::vector<double> ReadNumbers(std::string_view line) {
    std::vector<double> numbers;
    const char* const end = line.data() + line.size();
    for (const char* next = line.data(); next < end; ++next) {
        const auto [stop, error] = std::from_chars(next, end, numbers.emplace_back());
        if (error != std::errc()) Differ("a line of the capture");
        next = stop;
    }
    return numbers;
}

void CheckFrame(ISensorFileHandler* handler, const std::vector<std::string>& tracks, std::uint64_t frame,
                const std::vector<double>& expected) {
    std::vector<double> numbers;
    for (const std::string& track : tracks) {
        DynamicDataSampleSet set;
        Require(handler->GetDynamicSample(track.c_str(), {static_cast<std::int32_t>(frame), kFramesPerSecond}, &set));
        for (const ZT_Sample& sample : set.samples) {
            const auto& values = boost::get<std::vector<double>>(sample.value);
            numbers.insert(numbers.end(), values.begin(), values.end());
        }
    }
    const bool isSame = std::equal(numbers.begin(), numbers.end(), expected.begin(), expected.end(),
                                   [](double a, double b) { return std::abs(a - b) <= kPrecision * std::abs(b); });
    if (!isSame) Differ("frame " + std::to_string(frame));
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s DOCUMENT CAPTURE\n", argv[0]);
        return EXIT_FAILURE;
    }
    const bench::Host host;
    ISensorFileHandler* handler = nullptr;
    if (host->OpenFile(&handler, argv[1], nullptr) != ZT_OK) return EXIT_FAILURE;
    std::vector<std::string> tracks;
    CollectTracks(handler, "[\"dataOutline\"]", tracks);

    std::ifstream capture(argv[2], std::ios::binary);
    std::string line;
    while (std::getline(capture, line) && !line.starts_with("Frames: ")) continue;
    if (!capture) bench::Fail(argv[2]);
    const std::uint64_t frames = bench::CountArgument(std::string_view(line).substr(8));
    std::getline(capture, line);
    for (const std::string& track : tracks) {
        ZT_DynamicDataInfo info;
        Require(handler->GetDynamicDataInfo(track.c_str(), &info));
        if (info.sampleCount != frames) Differ("the number of samples of " + track);
    }
    std::uint64_t checked = 0;
    const std::uint64_t step = std::max<std::uint64_t>(frames / kCheckedFrames, 1);
    for (std::uint64_t frame = 0; std::getline(capture, line); ++frame) {
        if (frame % step != 0 && frame != frames - 1) continue;
        CheckFrame(handler, tracks, frame, ReadNumbers(line));
        ++checked;
    }
    if (checked < std::min(frames, kCheckedFrames)) Differ("too few frames in the capture");
    std::printf("checked_frames %" PRIu64 "\n", checked);
    return EXIT_SUCCESS;
}
