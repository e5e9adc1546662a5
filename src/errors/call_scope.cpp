#include "errors/call_scope.h"

#include "util/thread_slot.h"

namespace zentor {

namespace {

// Each thread's innermost scope. Made when the library is loaded; where the system has no slot left, scopes are not
// noticed.
os::ThreadSlot innermost(nullptr);

CallScope* Innermost() noexcept { return static_cast<CallScope*>(innermost.Get()); }

}  // namespace

CallScope::CallScope(const void* object) noexcept : object_(object), outer_(Innermost()) { innermost.Set(this); }

CallScope::~CallScope() { innermost.Set(outer_); }

bool CallScope::IsIn(const void* object) noexcept {
    for (const CallScope* scope = Innermost(); scope != nullptr; scope = scope->outer_) {
        if (scope->object_ == object) return true;
    }
    return false;
}

bool CallScope::IsInAny() noexcept { return Innermost() != nullptr; }

}  // namespace zentor
