#include "errors/host_boundary.h"

#include "errors/last_exception.h"
#include "errors/message.h"

namespace zentor {

ZT_Result ReportException(void* errorContext, const ns_sensor::ZT_Exception& failure) noexcept {
    const char* message = *failure.what() != '\0' ? failure.what() : kUnknownExceptionText;
    ReportError(errorContext, failure.code(), message, failure.extra1(), failure.extra2());
    return failure.code();
}

ZT_Result ReportEntry(void* errorContext, const ErrorEntry& entry) noexcept {
    try {
        const std::string message = FormMessage(entry.key, {});
        SetLastException({entry.code, message, -1, -1});
        ReportError(errorContext, entry.code, message.c_str(), -1, -1);
    } catch (...) {
        // Not even a message can be formed; the code still gets through.
        SetLastException({entry.code, {}, -1, -1});
        ReportError(errorContext, entry.code, kUnknownExceptionText, -1, -1);
    }
    return entry.code;
}

}  // namespace zentor
