// Failures that are kept while something else is tried.
#pragma once

#include <optional>

#include "errors/exception.h"

namespace zentor {

// The first of several failures: raised when all has been tried.
class FirstFailure {
public:
    void Keep(const ns_sensor::ZT_Exception& failure) {
        if (!failure_) failure_ = failure;
    }
    // Raises it like one that happens now: it is the thread's last exception then, whatever came after it.
    void RaiseIfAny() const;

private:
    std::optional<ns_sensor::ZT_Exception> failure_;
};

}  // namespace zentor
