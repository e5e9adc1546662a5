// Opens a document as a host would, through nothing but the exported functions. Only OpenFile is timed.
#include <cstdio>
#include <cstdlib>

#include "host.h"
#include "measure.h"
#include "private_memory.h"

int main(int argc, char** argv) {
    if (argc != 2 && argc != 3) {
        std::fprintf(stderr, "usage: %s DOCUMENT [memory]\n", argv[0]);
        return EXIT_FAILURE;
    }
    const bench::Host host;
    ISensorFileHandler* handler = nullptr;
    // Watching takes time, so a run measures one of the two.
    if (argc == 3) {
        const long before = bench::PrivateKib();
        bench::PeakSampler memory;
        const bool opened = host->OpenFile(&handler, argv[1], nullptr) == ZT_OK;
        memory.Stop();
        std::printf("peak_kib %ld\nkept_kib %ld\n", memory.Peak() - before, bench::PrivateKib() - before);
        return opened ? EXIT_SUCCESS : EXIT_FAILURE;
    }
    bench::Stopwatch watch;
    const ZT_Result result = host->OpenFile(&handler, argv[1], nullptr);
    watch.Stop();
    watch.Print();
    return result == ZT_OK ? EXIT_SUCCESS : EXIT_FAILURE;
}
