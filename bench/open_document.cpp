// Opens a document as a host would, through nothing but the exported functions. Only OpenFile is timed.
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <thread>

#include "host.h"
#include "measure.h"

namespace {

// Memory of the process's own in KiB: what is resident without mapped files.
long PrivateKib() {
    std::FILE* const file = std::fopen("/proc/self/statm", "r");
    if (file == nullptr) bench::Fail("statm");
    long total = 0;
    long resident = 0;
    long shared = 0;
    if (std::fscanf(file, "%ld %ld %ld", &total, &resident, &shared) != 3) bench::Fail("statm");
    std::fclose(file);
    return (resident - shared) * (sysconf(_SC_PAGESIZE) / 1024);
}

// The most private memory at any millisecond of its life.
class PeakSampler {
public:
    PeakSampler() : m_before(PrivateKib()), m_thread([this] { Watch(); }) {}
    ~PeakSampler() { m_thread.join(); }
    PeakSampler(const PeakSampler&) = delete;
    PeakSampler& operator=(const PeakSampler&) = delete;

    void Stop() { m_stopped = true; }
    void Print() const { std::printf("private_kib %ld\n", std::max<long>(m_peak, PrivateKib()) - m_before); }

private:
    void Watch() {
        while (!m_stopped) {
            m_peak = std::max<long>(m_peak, PrivateKib());
            usleep(1000);
        }
    }

    long m_before;
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
