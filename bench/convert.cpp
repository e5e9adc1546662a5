// Converts a recording as a host would, through nothing but the exported functions. Only ConvertFile is measured.
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "host.h"
#include "measure.h"
#include "private_memory.h"

int main(int argc, char** argv) {
    const std::string_view mode = argc > 1 ? argv[1] : "";
    if (!(mode == "time" && (argc == 3 || argc == 4)) && !(mode == "memory" && argc == 3)) {
        std::fprintf(stderr, "usage: %s time INPUT [OUT] | memory INPUT\n", argv[0]);
        return EXIT_FAILURE;
    }
    const bench::Host zentor;
    IVkjsonStream* stream = nullptr;
    // Watching takes time, so a run measures one of the two.
    if (mode == "memory") {
        bench::PeakSampler memory;
        const bool converted = zentor->ConvertFile(&stream, argv[2], 0) == ZT_OK;
        memory.Stop();
        memory.Print();
        std::printf("peak_kib %ld\n", bench::Usage().ru_maxrss);
        return converted && zentor->ReleaseStream(&stream) == ZT_OK ? EXIT_SUCCESS : EXIT_FAILURE;
    }
    const long peakBefore = bench::Usage().ru_maxrss;
    bench::Stopwatch watch;
    const ZT_Result result = zentor->ConvertFile(&stream, argv[2], 0);
    watch.Stop();
    const long peakAfter = bench::Usage().ru_maxrss;

    bool ok = result == ZT_OK;
    if (ok) {
        watch.Print();
        std::printf("document_bytes %" PRIu32 "\npeak_kib_before %ld\npeak_kib_after %ld\n", stream->Size(), peakBefore,
                    peakAfter);
        if (argc == 4) ok = stream->SaveTo(argv[3]) == ZT_OK;
        ok = zentor->ReleaseStream(&stream) == ZT_OK && ok;
    }
    return ok ? EXIT_SUCCESS : EXIT_FAILURE;
}
