// Asks an open document for static nodes at random places, through the client forms, and prints the median time of one
// query: by index and by match name. All nodes stand in one group, or nine to a group.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "host.h"
#include "measure.h"

namespace {

constexpr int kQueries = 20000;

std::uint64_t valuesSeen = 0;

template <class MakePath>
double MedianMicroseconds(ISensorFileHandler* handler, std::uint64_t count, MakePath&& makePath) {
    std::vector<double> times;
    std::uint64_t state = 1;
    for (int query = 0; query < kQueries; ++query) {
        state = state * 6364136223846793005u + 1442695040888963407u;
        const std::string path = makePath((state >> 33) % count);
        const auto start = std::chrono::steady_clock::now();
        if (handler->GetStaticDataInfoClient(path.c_str(), nullptr) != ZT_OK) std::exit(EXIT_FAILURE);
        times.push_back(std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - start).count());
    }
    std::nth_element(times.begin(), times.begin() + kQueries / 2, times.end());
    return times[kQueries / 2];
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::fprintf(stderr, "usage: %s DOCUMENT flat|grouped COUNT\n", argv[0]);
        return EXIT_FAILURE;
    }
    const std::uint64_t groupSize = std::string_view(argv[2]) == "flat" ? bench::CountArgument(argv[3]) : 9;
    const std::uint64_t count = bench::CountArgument(argv[3]);
    static const ZT_StaticDataCallbacks callbacks = {nullptr, [](void*, double) { ++valuesSeen; }, nullptr, nullptr,
                                                     nullptr};
    bench::HostSuite().staticData = &callbacks;
    const bench::Host host;
    ISensorFileHandler* handler = nullptr;
    if (host->OpenFile(&handler, argv[1], nullptr) != ZT_OK) return EXIT_FAILURE;
    const double byIndex = MedianMicroseconds(handler, count, [&](std::uint64_t i) {
        return '[' + std::to_string(i / groupSize) + "][" + std::to_string(i % groupSize) + ']';
    });
    const double byName = MedianMicroseconds(handler, count, [&](std::uint64_t i) {
        return "[\"group" + std::to_string(i / groupSize) + "\"][\"data" + std::to_string(i) + "\"]";
    });
    std::printf("index_microseconds %.3f\nname_microseconds %.3f\n", byIndex, byName);
    return valuesSeen == 2 * kQueries ? EXIT_SUCCESS : EXIT_FAILURE;
}
