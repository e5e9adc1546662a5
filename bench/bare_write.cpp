// The floor for any conversion: writes as many bytes as a document has, from one buffer, to a new file.
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "measure.h"

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s BYTES OUT\n", argv[0]);
        return EXIT_FAILURE;
    }
    std::uint64_t remaining = bench::CountArgument(argv[1]);
    const std::vector<char> piece(1 << 20, 'x');
    bench::Stopwatch watch;
    // O_EXCL: writing over pages that are already there would be cheaper than what a conversion has to do.
    const int file = open(argv[2], O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (file < 0) bench::Fail(argv[2]);
    while (remaining > 0) {
        const ssize_t written = write(file, piece.data(), std::min<std::uint64_t>(remaining, piece.size()));
        if (written <= 0) bench::Fail("write");
        remaining -= static_cast<std::uint64_t>(written);
    }
    if (close(file) != 0) bench::Fail("close");
    watch.Stop();
    watch.Print();
    return EXIT_SUCCESS;
}
