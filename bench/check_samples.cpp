// Asks a generated document for samples at the start, in the middle and at the end of each node, through the client
// forms, and compares what comes with what was written. Runs on Windows, too.
#include <algorithm>
#include <array>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "arguments.h"
#include "generated_samples.h"
#include "host.h"

namespace {

// Frames to each side of a place.
constexpr std::uint64_t kReach = 50;

// The samples that a query is to hand over: `count` of them from `first` on, forwards or backwards.
class Expectation {
public:
    Expectation(int node, std::uint64_t samplesPerNode, std::uint64_t first, std::uint64_t count, bool isBackwards)
        : m_node(node), m_samplesPerNode(samplesPerNode), m_first(first), m_count(count), m_isBackwards(isBackwards) {}

    void Take(std::string_view time, const double* values, std::uint64_t size) {
        if (m_taken < m_count) {
            m_expected.Set(m_node, m_isBackwards ? m_first - m_taken : m_first + m_taken, m_samplesPerNode);
            m_isSame = m_isSame && m_expected.Is(time, values, size);
        }
        ++m_taken;
    }

    // Ends the program unless all came.
    void Check(ZT_Result result) const {
        if (result == ZT_OK && m_isSame && m_taken == m_count) return;
        std::fprintf(stderr,
                     "node %d: result %" PRIu32 ", %" PRIu64 " samples instead of the %" PRIu64 " from %" PRIu64 "\n",
                     m_node, result, m_taken, m_count, m_first);
        std::exit(EXIT_FAILURE);
    }

private:
    int m_node;
    std::uint64_t m_samplesPerNode;
    std::uint64_t m_first;
    std::uint64_t m_count;
    bool m_isBackwards;
    std::uint64_t m_taken = 0;
    bool m_isSame = true;
    bench::ExpectedSample m_expected;
};

void SetCallbacks() {
    static ZT_SampleCallbacks samples{};
    samples.addNumber = [](void* handle, const char* time, std::uint64_t timeLength, double value) {
        static_cast<Expectation*>(handle)->Take({time, timeLength}, &value, 1);
    };
    samples.addNumberArray = [](void* handle, const char* time, std::uint64_t timeLength, const double* values,
                                std::uint64_t count) {
        static_cast<Expectation*>(handle)->Take({time, timeLength}, values, count);
    };
    bench::HostSuite().samples = &samples;
}

class Checker {
public:
    Checker(ISensorFileHandler* handler, std::uint64_t samplesPerNode) : m_handler(handler), m_count(samplesPerNode) {}

    void Check(int node, std::uint64_t sample) {
        const std::uint64_t frame = bench::FrameOf(sample, m_count);
        const std::uint64_t lastFrame = bench::FrameOf(m_count - 1, m_count);
        const std::uint64_t from = frame - std::min(frame, kReach);
        const std::uint64_t to = std::min(frame + kReach, lastFrame);
        const std::uint64_t first = bench::FirstSampleFrom(from, m_count);
        const std::uint64_t end = bench::FirstSampleFrom(to + 1, m_count);
        const std::string path = "[0][" + std::to_string(node) + ']';

        Expectation forwards(node, m_count, first, end - first, false);
        forwards.Check(m_handler->GetDynamicSamplesClient(path.c_str(), TimeOf(from), TimeOf(to), &forwards));
        Expectation backwards(node, m_count, end - 1, end - first, true);
        backwards.Check(m_handler->GetDynamicSamplesClient(path.c_str(), TimeOf(to), TimeOf(from), &backwards));
        // Of several at one time, the last.
        Expectation single(node, m_count, bench::FirstSampleFrom(frame + 1, m_count) - 1, 1, false);
        single.Check(m_handler->GetDynamicSampleClient(path.c_str(), TimeOf(frame), &single));
        m_compared += 2 * (end - first) + 1;
    }

    std::uint64_t Compared() const { return m_compared; }

private:
    static ZT_Time TimeOf(std::uint64_t frame) { return {static_cast<std::int32_t>(frame), bench::kFramesPerSecond}; }

    ISensorFileHandler* m_handler;
    std::uint64_t m_count;
    std::uint64_t m_compared = 0;
};

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s DOCUMENT COUNT\n", argv[0]);
        return EXIT_FAILURE;
    }
    const std::uint64_t count = bench::CountArgument(argv[2]) / bench::kSampleNodes;
    if (count == 0) {
        std::fputs("no samples to compare\n", stderr);
        return EXIT_FAILURE;
    }
    SetCallbacks();
    const bench::Host host;
    ISensorFileHandler* handler = nullptr;
    if (host->OpenFile(&handler, argv[1], nullptr) != ZT_OK) return EXIT_FAILURE;
    Checker checker(handler, count);
    for (int node = 0; node < bench::kSampleNodes; ++node) {
        for (const std::uint64_t sample : std::array{std::uint64_t{0}, count / 2, count - 1}) {
            checker.Check(node, sample);
        }
    }
    std::printf("samples_compared %" PRIu64 "\n", checker.Compared());
    return host->CloseFile(&handler) == ZT_OK ? EXIT_SUCCESS : EXIT_FAILURE;
}
