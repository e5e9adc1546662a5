// Asks an open document for samples as a host of the library's own toolchain would, and prints median times: of one
// sample and of 1,000 neighbours at random places, and how many number texts a second a query of a whole node reads.
// The document is one that the generator made; every sample that comes back is compared with what was written.
#include <algorithm>
#include <chrono>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "arguments.h"
#include "generated_samples.h"
#include "host.h"
#include "zentor/records.h"

namespace {

constexpr std::uint64_t kNeighbours = 1000;
constexpr int kSingleQueries = 20000;
constexpr int kNeighbourQueries = 1000;
constexpr int kWholeQueries = bench::kSampleNodes / 2;

class Document {
public:
    Document(ISensorFileHandler* handler, std::uint64_t samplesPerNode) : m_handler(handler), m_count(samplesPerNode) {}

    // `name`: what the figures begin with. `firstNode`: 0 for the nodes of numbers, 1 for those of arrays.
    void Measure(const char* name, int firstNode) {
        // The whole nodes come first: after them every page of the document is mapped.
        int node = firstNode - 2;
        const double whole = Median(kWholeQueries, [&] { return Microseconds(node += 2, 0, m_count); });
        const double numbers = static_cast<double>(m_count * (bench::IsArrayNode(firstNode) ? bench::kArraySize : 1));
        std::printf("%s_texts_per_second %.0f\n", name, numbers / whole * 1e6);
        std::printf("%s_single_microseconds %.3f\n", name,
                    Median(kSingleQueries, [&] { return Microseconds(RandomNode(firstNode), Random(m_count), 1); }));
        std::printf("%s_neighbours_microseconds %.3f\n", name, Median(kNeighbourQueries, [&] {
                        return Microseconds(RandomNode(firstNode), Random(m_count - kNeighbours + 1), kNeighbours);
                    }));
    }

private:
    template <class Time>
    static double Median(int queries, Time&& time) {
        std::vector<double> times;
        for (int i = 0; i < queries; ++i) times.push_back(time());
        std::nth_element(times.begin(), times.begin() + queries / 2, times.end());
        return times[static_cast<std::size_t>(queries / 2)];
    }

    // One query; the reading of the clock is included, the comparison of the samples and their freeing are not.
    double Microseconds(int node, std::uint64_t first, std::uint64_t count) {
        const std::string path = "[0][" + std::to_string(node) + ']';
        DynamicDataSampleSet set;
        const auto start = std::chrono::steady_clock::now();
        const ZT_Result result =
            count == 1 ? m_handler->GetDynamicSample(path.c_str(), TimeOf(first), &set)
                       : m_handler->GetDynamicSamples(path.c_str(), TimeOf(first), TimeOf(first + count - 1), &set);
        const auto end = std::chrono::steady_clock::now();
        if (result != ZT_OK) std::exit(EXIT_FAILURE);
        Compare(set, node, first, count);
        return std::chrono::duration<double, std::micro>(end - start).count();
    }

    ZT_Time TimeOf(std::uint64_t sample) const {
        return {static_cast<std::int32_t>(bench::FrameOf(sample, m_count)), bench::kFramesPerSecond};
    }

    void Compare(const DynamicDataSampleSet& set, int node, std::uint64_t first, std::uint64_t count) {
        bool isSame = set.samples.size() == count;
        for (std::uint64_t i = 0; isSame && i < count; ++i) {
            const ZT_Sample& sample = set.samples[i];
            m_expected.Set(node, first + i, m_count);
            const auto* const number = boost::get<double>(&sample.value);
            const auto* const numbers = boost::get<std::vector<double>>(&sample.value);
            isSame = number != nullptr
                         ? m_expected.Is(sample.time, number, 1)
                         : numbers != nullptr && m_expected.Is(sample.time, numbers->data(), numbers->size());
        }
        if (isSame) return;
        std::fprintf(stderr, "node %d: other than the %" PRIu64 " samples from %" PRIu64 "\n", node, count, first);
        std::exit(EXIT_FAILURE);
    }

    int RandomNode(int firstNode) { return firstNode + 2 * static_cast<int>(Random(bench::kSampleNodes / 2)); }
    std::uint64_t Random(std::uint64_t end) {
        m_state = m_state * 6364136223846793005u + 1442695040888963407u;
        return (m_state >> 33) % end;
    }

    ISensorFileHandler* m_handler;
    std::uint64_t m_count;
    std::uint64_t m_state = 1;
    bench::ExpectedSample m_expected;
};

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s DOCUMENT COUNT\n", argv[0]);
        return EXIT_FAILURE;
    }
    const std::uint64_t count = bench::CountArgument(argv[2]) / bench::kSampleNodes;
    // Otherwise samples share times.
    if (count < kNeighbours || count > bench::kFramesPerDay) {
        std::fprintf(stderr, "%" PRIu64 " samples a node are too few or too many\n", count);
        return EXIT_FAILURE;
    }
    const bench::Host host;
    ISensorFileHandler* handler = nullptr;
    if (host->OpenFile(&handler, argv[1], nullptr) != ZT_OK) return EXIT_FAILURE;
    Document document(handler, count);
    document.Measure("number", 0);
    document.Measure("array", 1);
    return EXIT_SUCCESS;
}
