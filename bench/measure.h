// What the programs that measure share: clocks and peak memory. Every program prints its figures as lines "name value",
// which the scripts collect.
#ifndef ZENTOR_BENCH_MEASURE_H
#define ZENTOR_BENCH_MEASURE_H

#include <sys/resource.h>

#include <chrono>
#include <cstdio>

#include "arguments.h"

namespace bench {

inline rusage Usage() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage;
}

inline double CpuSeconds() {
    const rusage usage = Usage();
    return static_cast<double>(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
           static_cast<double>(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) * 1e-6;
}

// Wall time and processor time (user and system) since the object was made.
class Stopwatch {
public:
    void Stop() {
        m_wallSeconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - m_start).count();
        m_cpuSeconds = CpuSeconds() - m_cpuStart;
    }
    void Print() const { std::printf("wall_seconds %.6f\ncpu_seconds %.6f\n", m_wallSeconds, m_cpuSeconds); }

private:
    double m_cpuStart = CpuSeconds();
    std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
    double m_wallSeconds = 0;
    double m_cpuSeconds = 0;
};

}  // namespace bench

#endif
