// Asks an open document for static nodes at random places, through the client forms, and prints the median time of one
// query of each kind, by index and by match name. Nodes stand GROUP_SIZE to a group, as the generator writes them.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

#include "host.h"
#include "measure.h"

namespace {

constexpr int kQueries = 20000;

using Query = ZT_Result (ISensorFileHandler::*)(const char* dataPath, void* handle) noexcept;

std::uint64_t answers = 0;

template <class MakePath>
double MedianMicroseconds(ISensorFileHandler* handler, Query query, std::uint64_t count, MakePath&& makePath) {
    std::vector<double> times;
    std::uint64_t state = 1;
    for (int i = 0; i < kQueries; ++i) {
        state = state * 6364136223846793005u + 1442695040888963407u;
        const std::string path = makePath((state >> 33) % count);
        const auto start = std::chrono::steady_clock::now();
        if ((handler->*query)(path.c_str(), nullptr) != ZT_OK) std::exit(EXIT_FAILURE);
        times.push_back(std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - start).count());
    }
    std::nth_element(times.begin(), times.begin() + kQueries / 2, times.end());
    return times[kQueries / 2];
}

void SetCallbacks() {
    static const ZT_StaticDataCallbacks staticData = {
        sizeof(ZT_StaticDataCallbacks), nullptr, [](void*, double) { ++answers; }, nullptr, nullptr, nullptr};
    static const ZT_NodeInfoCallbacks nodeInfo = {
        sizeof(ZT_NodeInfoCallbacks), [](void*, std::uint32_t nodeType, const char*, std::uint64_t, const char*,
                                         std::uint64_t) { answers += nodeType == 2; }};
    bench::HostSuite().staticData = &staticData;
    bench::HostSuite().nodeInfo = &nodeInfo;
}

void Measure(ISensorFileHandler* handler, const char* name, Query query, std::uint64_t count, std::uint64_t groupSize) {
    const double byIndex = MedianMicroseconds(handler, query, count, [&](std::uint64_t i) {
        return '[' + std::to_string(i / groupSize) + "][" + std::to_string(i % groupSize) + ']';
    });
    const double byName = MedianMicroseconds(handler, query, count, [&](std::uint64_t i) {
        return "[\"group" + std::to_string(i / groupSize) + "\"][\"data" + std::to_string(i) + "\"]";
    });
    std::printf("%s_by_index_microseconds %.3f\n%s_by_name_microseconds %.3f\n", name, byIndex, name, byName);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::fprintf(stderr, "usage: %s DOCUMENT COUNT GROUP_SIZE\n", argv[0]);
        return EXIT_FAILURE;
    }
    const std::uint64_t count = bench::CountArgument(argv[2]);
    const std::uint64_t groupSize = bench::CountArgument(argv[3]);
    SetCallbacks();
    const bench::Host host;
    ISensorFileHandler* handler = nullptr;
    if (host->OpenFile(&handler, argv[1], nullptr) != ZT_OK) return EXIT_FAILURE;
    Measure(handler, "static_data", &ISensorFileHandler::GetStaticDataInfoClient, count, groupSize);
    Measure(handler, "child_info", &ISensorFileHandler::GetGroupChildInfoClient, count, groupSize);
    return answers == 4 * kQueries ? EXIT_SUCCESS : EXIT_FAILURE;
}
