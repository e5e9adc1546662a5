// The host's callbacks and the context that goes with its error reports.
#pragma once

#include <cstdint>

#include "errors/raise.h"
#include "zentor/zentor.h"

namespace zentor {

// Keeps the first suite that is not null, for the life of the process.
void OfferHostSuite(const ZT_HostSuite* suite) noexcept;
const ZT_HostSuite* HostSuite() noexcept;

// The context of the latest CreateZentor_1, used by the reports of all operations.
void SetErrorContext(void* context) noexcept;
void* ErrorContext() noexcept;

// Calls a callback of the host's, null for none. An exception that leaves it is ZT_UNKNOWN.
template <class... Parameters, class... Arguments>
void CallHost(void (*callback)(Parameters...), Arguments... arguments) {
    if (callback == nullptr) return;
    try {
        callback(arguments...);
    } catch (...) {
        Raise(kUnknownException);
    }
}

// Calls the suite's report-error entry, if there is one; false when an exception left it.
bool ReportError(void* errorContext, std::uint32_t code, const char* message, std::int64_t extra1,
                 std::int64_t extra2) noexcept;

}  // namespace zentor
