// A host for benchmarks: a manager for the length of a scope, failures on standard error.
#ifndef ZENTOR_BENCH_HOST_H
#define ZENTOR_BENCH_HOST_H

#include <cinttypes>
#include <cstdio>
#include <cstdlib>

#include "zentor/zentor.h"

namespace bench {

// The library keeps the address of the suite for the life of the process.
inline ZT_HostSuite& HostSuite() {
    static ZT_HostSuite suite = [] {
        ZT_HostSuite table{};
        table.reportError = [](void*, std::uint32_t code, const char* message, std::int64_t extra1,
                               std::int64_t extra2) {
            std::fprintf(stderr, "error %" PRIu32 ": %s (%" PRId64 ", %" PRId64 ")\n", code, message, extra1, extra2);
        };
        return table;
    }();
    return suite;
}

class Host {
public:
    Host() {
        CreateZentor_1(&m_zentor, nullptr, nullptr, nullptr, nullptr, &HostSuite(), nullptr);
        if (m_zentor == nullptr) std::exit(EXIT_FAILURE);
    }
    ~Host() { DestroyZentor_1(&m_zentor, nullptr); }
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    IZentor* operator->() const { return m_zentor; }

private:
    IZentor* m_zentor = nullptr;
};

}  // namespace bench

#endif
