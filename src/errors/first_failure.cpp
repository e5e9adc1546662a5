#include "errors/first_failure.h"

#include "errors/last_exception.h"

namespace zentor {

void FirstFailure::RaiseIfAny() const {
    if (!failure_) return;
    SetLastException({failure_->code(), failure_->what(), failure_->extra1(), failure_->extra2()});
    throw ns_sensor::ZT_Exception(*failure_);
}

}  // namespace zentor
