#include "reader/json_value.h"

#include "errors/raise.h"

namespace zentor {

void RaiseJsonAssertion() { Raise(kAssertionFailure, "RapidJSON"); }

}  // namespace zentor
