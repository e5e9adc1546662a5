#include "errors/host_suite.h"

#include <atomic>

namespace zentor {

namespace {

std::atomic<const ZT_HostSuite*> hostSuite{nullptr};
std::atomic<void*> latestErrorContext{nullptr};

}  // namespace

void OfferHostSuite(const ZT_HostSuite* suite) noexcept {
    const ZT_HostSuite* none = nullptr;
    if (suite != nullptr) hostSuite.compare_exchange_strong(none, suite);
}

const ZT_HostSuite* HostSuite() noexcept { return hostSuite.load(); }

void SetErrorContext(void* context) noexcept { latestErrorContext.store(context); }

void* ErrorContext() noexcept { return latestErrorContext.load(); }

bool ReportError(void* errorContext, std::uint32_t code, const char* message, std::int64_t extra1,
                 std::int64_t extra2) noexcept {
    const ZT_HostSuite* suite = HostSuite();
    if (suite == nullptr || suite->reportError == nullptr) return true;
    try {
        suite->reportError(errorContext, code, message, extra1, extra2);
        return true;
    } catch (...) {
        return false;
    }
}

}  // namespace zentor
