#include "errors/last_exception.h"

#include <utility>

namespace zentor {

namespace {

thread_local LastException lastException;

}  // namespace

void SetLastException(LastException record) noexcept { lastException = std::move(record); }

LastException TakeLastException() noexcept { return std::exchange(lastException, {}); }

}  // namespace zentor
