// Converts a table as a host would, through nothing but the exported functions. Only ConvertFile is timed.
#include <cinttypes>
#include <cstdio>
#include <cstdlib>

#include "host.h"
#include "measure.h"

int main(int argc, char** argv) {
    if (argc != 2 && argc != 3) {
        std::fprintf(stderr, "usage: %s INPUT.csv [OUT]\n", argv[0]);
        return EXIT_FAILURE;
    }
    const bench::Host zentor;
    IVkjsonStream* stream = nullptr;
    const long peakBefore = bench::Usage().ru_maxrss;
    bench::Stopwatch watch;
    const ZT_Result result = zentor->ConvertFile(&stream, argv[1], 0);
    watch.Stop();
    const long peakAfter = bench::Usage().ru_maxrss;

    bool ok = result == ZT_OK;
    if (ok) {
        watch.Print();
        std::printf("document_bytes %" PRIu32 "\npeak_kib_before %ld\npeak_kib_after %ld\n", stream->Size(), peakBefore,
                    peakAfter);
        if (argc == 3) ok = stream->SaveTo(argv[2]) == ZT_OK;
        ok = zentor->ReleaseStream(&stream) == ZT_OK && ok;
    }
    return ok ? EXIT_SUCCESS : EXIT_FAILURE;
}
