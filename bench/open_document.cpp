// Opens a document as a host would, through nothing but the exported functions. Only OpenFile is timed.
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <thread>

#include "host.h"
#include "measure.h"

namespace {

// The anonymous memory of the process in KiB. Mapped files do not count, nor files in a file system in memory.
long PrivateKib() {
    std::FILE* const file = std::fopen("/proc/self/status", "r");
    if (file == nullptr) bench::Fail("status");
    std::array<char, 256> line;
    long kib = -1;
    while (kib < 0 && std::fgets(line.data(), static_cast<int>(line.size()), file) != nullptr) {
        if (std::sscanf(line.data(), "RssAnon: %ld", &kib) != 1) kib = -1;
    }
    std::fclose(file);
    if (kib < 0) bench::Fail("RssAnon");
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
    void Print() const { std::printf("private_kib %ld\n", std::max<long>(m_peak, PrivateKib())); }

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

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2 && argc != 3) {
        std::fprintf(stderr, "usage: %s DOCUMENT [memory]\n", argv[0]);
        return EXIT_FAILURE;
    }
    const bench::Host host;
    ISensorFileHandler* handler = nullptr;
    // Watching takes time, so a run measures one of the two.
    if (argc == 3) {
        PeakSampler memory;
        const bool opened = host->OpenFile(&handler, argv[1], nullptr) == ZT_OK;
        memory.Stop();
        memory.Print();
        return opened ? EXIT_SUCCESS : EXIT_FAILURE;
    }
    bench::Stopwatch watch;
    const ZT_Result result = host->OpenFile(&handler, argv[1], nullptr);
    watch.Stop();
    watch.Print();
    return result == ZT_OK ? EXIT_SUCCESS : EXIT_FAILURE;
}
