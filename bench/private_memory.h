// The private memory of a program at its peak, for programs that measure themselves.
#ifndef ZENTOR_BENCH_PRIVATE_MEMORY_H
#define ZENTOR_BENCH_PRIVATE_MEMORY_H

#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdio>
#include <thread>

#include "arguments.h"

namespace bench {

// The anonymous memory of the process in KiB. Mapped files do not count, nor files in a file system in memory.
inline long PrivateKib() {
    std::FILE* const file = std::fopen("/proc/self/status", "r");
    if (file == nullptr) Fail("status");
    std::array<char, 256> line;
    long kib = -1;
    while (kib < 0 && std::fgets(line.data(), static_cast<int>(line.size()), file) != nullptr) {
        if (std::sscanf(line.data(), "RssAnon: %ld", &kib) != 1) kib = -1;
    }
    std::fclose(file);
    if (kib < 0) Fail("RssAnon");
    return kib;
}

// The most private memory at any millisecond of its life.
class PeakSampler {
public:
    PeakSampler() : m_thread([this] { Watch(); }) {}
    ~PeakSampler() { m_thread.join(); }
    PeakSampler(const PeakSampler&) = delete;
    PeakSampler& operator=(const PeakSampler&) = delete;

    void Stop() { m_stopped = true; }
    long Peak() const { return std::max<long>(m_peak, PrivateKib()); }
    void Print() const { std::printf("private_kib %ld\n", Peak()); }

private:
    void Watch() {
        while (!m_stopped) {
            m_peak = std::max<long>(m_peak, PrivateKib());
            usleep(1000);
        }
    }

    std::atomic<long> m_peak{0};
    std::atomic<bool> m_stopped{false};
    std::thread m_thread;
};

}  // namespace bench

#endif
