// What stands around every function that a host calls: nothing is thrown past it, every failure is reported.
#pragma once

#include <new>

#include "errors/call_scope.h"
#include "errors/error_table.h"
#include "errors/exception.h"
#include "errors/host_suite.h"

namespace zentor {

// Reports a library failure, with "Unknown exception" when it has no text; returns its code. When the host's entry lets
// an exception out, that becomes the failure: 23, kept as the thread's last exception.
ZT_Result ReportException(void* errorContext, const ns_sensor::ZT_Exception& failure) noexcept;
// Keeps a failure without parameters and details as the thread's last exception.
void KeepEntry(const ErrorEntry& entry) noexcept;
// Reports a failure that came without code and text of its own, and keeps it as the thread's last exception.
ZT_Result ReportEntry(void* errorContext, const ErrorEntry& entry) noexcept;

// Runs `body`; returns 0, or the code of the failure that was reported.
template <class Body>
ZT_Result RunAtBoundary(void* errorContext, Body&& body) noexcept {
    try {
        body();
        return ZT_OK;
    } catch (const ns_sensor::ZT_Exception& failure) {
        return ReportException(errorContext, failure);
    } catch (const std::bad_alloc&) {
        return ReportEntry(errorContext, kMemoryNotAvailable);
    } catch (...) {
        return ReportEntry(errorContext, kUnknownException);
    }
}

// The same for an operation of an object that the host has.
template <class Body>
ZT_Result RunOperation(const void* object, Body&& body) noexcept {
    const CallScope scope(object);
    return RunAtBoundary(ErrorContext(), body);
}

}  // namespace zentor
