// Writes the motion capture that the benchmark converts: a skeleton of a few chains and one line of numbers a frame, as
// a recorder of 120 frames a second writes them.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "arguments.h"
#include "generated_file.h"

namespace {

constexpr std::uint64_t kChainLength = 12;
constexpr std::int64_t kUnit = 1000000;  // numbers have six decimals
constexpr int kDecimals = 6;

// Swings between two ends at a pace of its own, with some noise: about as many digits as recorded angles have.
class Channel {
public:
    Channel(bench::SplitMix64& random, std::int64_t middle, std::int64_t reach)
        : m_middle(middle * kUnit),
          m_reach(reach * kUnit),
          m_value(random.Around(m_reach)),
          m_step(kUnit / 4 + random.Around(kUnit / 5)) {}

    std::int64_t Next(bench::SplitMix64& random) {
        m_value += m_step + random.Around(kUnit / 10);
        if ((m_value > m_reach && m_step > 0) || (m_value < -m_reach && m_step < 0)) m_step = -m_step;
        return m_middle + m_value;
    }

private:
    std::int64_t m_middle;
    std::int64_t m_reach;
    std::int64_t m_value;
    std::int64_t m_step;
};

class Capture {
public:
    explicit Capture(const char* path) : m_file(path) {}

    void Write(std::uint64_t joints, std::uint64_t frames) {
        Hierarchy(joints);
        Motion(joints, frames);
        m_file.Close();
    }

private:
    // The joints after the root hang from it in chains.
    void Hierarchy(std::uint64_t joints) {
        m_file.Text("HIERARCHY\nROOT Hips\n{\n");
        m_depth = 1;
        Offset();
        Line("CHANNELS 6 Xposition Yposition Zposition Zrotation Yrotation Xrotation");
        for (std::uint64_t first = 1; first < joints; first += kChainLength) {
            const std::uint64_t end = std::min(first + kChainLength, joints);
            for (std::uint64_t joint = first; joint < end; ++joint) {
                Open("JOINT Chain" + std::to_string(first / kChainLength) + "_" + std::to_string(joint - first));
                Offset();
                Line("CHANNELS 3 Zrotation Yrotation Xrotation");
            }
            EndSite();
            for (std::uint64_t joint = first; joint < end; ++joint) Close();
        }
        if (joints == 1) EndSite();
        Close();
    }

    void EndSite() {
        Open("End Site");
        Offset();
        Close();
    }
    void Open(const std::string& title) {
        Line(title);
        Line("{");
        ++m_depth;
    }
    void Close() {
        --m_depth;
        Line("}");
    }
    void Offset() {
        Indent();
        m_file.Text("OFFSET");
        for (int axis = 0; axis < 3; ++axis) {
            m_file.Text(" ");
            m_file.Number(m_random.Around(20 * kUnit), kDecimals);
        }
        m_file.Text("\n");
    }
    void Line(std::string_view text) {
        Indent();
        m_file.Text(text);
        m_file.Text("\n");
    }
    void Indent() {
        for (int i = 0; i < m_depth; ++i) m_file.Text("\t");
    }

    void Motion(std::uint64_t joints, std::uint64_t frames) {
        std::vector<Channel> channels = {{m_random, 0, 150}, {m_random, 90, 10}, {m_random, 0, 150}};
        for (std::uint64_t i = 0; i < 3 * joints; ++i) channels.emplace_back(m_random, 0, 45);
        m_file.Text("MOTION\nFrames: ");
        m_file.Number(static_cast<std::int64_t>(frames), 0);
        m_file.Text("\nFrame Time: 0.0083333\n");
        for (std::uint64_t frame = 0; frame < frames; ++frame) {
            for (std::size_t i = 0; i < channels.size(); ++i) {
                if (i != 0) m_file.Text(" ");
                m_file.Number(channels[i].Next(m_random), kDecimals);
            }
            m_file.Text("\n");
        }
    }

    bench::GeneratedFile m_file;
    bench::SplitMix64 m_random;
    int m_depth = 0;
};

}  // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::fprintf(stderr, "usage: %s JOINTS FRAMES OUT.bvh\n", argv[0]);
        return EXIT_FAILURE;
    }
    const std::uint64_t joints = bench::CountArgument(argv[1]);
    const std::uint64_t frames = bench::CountArgument(argv[2]);
    if (joints == 0) {
        std::fputs("a capture has at least one joint\n", stderr);
        return EXIT_FAILURE;
    }
    Capture(argv[3]).Write(joints, frames);
    return EXIT_SUCCESS;
}
