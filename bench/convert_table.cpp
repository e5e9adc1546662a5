// Converts a table as a host would, through nothing but the exported functions. Only ConvertFile is timed.
#include <cinttypes>
#include <cstdio>
#include <cstdlib>

#include "measure.h"
#include "zentor/zentor.h"

namespace {

void ReportError(void*, std::uint32_t code, const char* message, std::int64_t extra1, std::int64_t extra2) {
    std::fprintf(stderr, "error %" PRIu32 ": %s (%" PRId64 ", %" PRId64 ")\n", code, message, extra1, extra2);
}

// The library keeps the address of the suite for the life of the process.
const ZT_HostSuite hostSuite = {nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                nullptr, nullptr, nullptr, nullptr, nullptr, &ReportError};

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2 && argc != 3) {
        std::fprintf(stderr, "usage: %s INPUT.csv [OUT]\n", argv[0]);
        return EXIT_FAILURE;
    }
    IZentor* zentor = nullptr;
    CreateZentor_1(&zentor, nullptr, nullptr, nullptr, nullptr, &hostSuite, nullptr);
    if (zentor == nullptr) return EXIT_FAILURE;

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
    DestroyZentor_1(&zentor, nullptr);
    return ok ? EXIT_SUCCESS : EXIT_FAILURE;
}
