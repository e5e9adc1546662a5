#include "errors/host_boundary.h"

#include "errors/last_exception.h"
#include "errors/message.h"

namespace zentor {

namespace {

// The code of the failure in the end: the one that was reported, unless reporting it failed.
ZT_Result Report(void* errorContext, std::uint32_t code, const char* message, std::int64_t extra1,
                 std::int64_t extra2) noexcept {
    if (ReportError(errorContext, code, message, extra1, extra2)) return code;
    KeepEntry(kUnknownException);
    return kUnknownException.code;
}

}  // namespace

void KeepEntry(const ErrorEntry& entry) noexcept {
    try {
        SetLastException({entry.code, FormMessage(entry.key, {}), -1, -1});
    } catch (...) {
        // Not even a message can be formed; the code still gets through.
        SetLastException({entry.code, {}, -1, -1});
    }
}

ZT_Result ReportException(void* errorContext, const ns_sensor::ZT_Exception& failure) noexcept {
    const char* message = *failure.what() != '\0' ? failure.what() : kUnknownExceptionText;
    return Report(errorContext, failure.code(), message, failure.extra1(), failure.extra2());
}

ZT_Result ReportEntry(void* errorContext, const ErrorEntry& entry) noexcept {
    KeepEntry(entry);
    const auto kept = GetLastException();
    const bool hasMessage = kept != nullptr && kept->code == entry.code && !kept->message.empty();
    return Report(errorContext, entry.code, hasMessage ? kept->message.c_str() : kUnknownExceptionText, -1, -1);
}

}  // namespace zentor
