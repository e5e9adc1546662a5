#include "util/thread_slot.h"

#include <windows.h>

namespace zentor::os {

// A fiber-local slot: its callback runs when a thread ends, and for the values of all threads when the slot goes.
ThreadSlot::ThreadSlot(Free free) noexcept : key_(FlsAlloc(free)), hasKey_(key_ != FLS_OUT_OF_INDEXES) {}

ThreadSlot::~ThreadSlot() {
    if (hasKey_) FlsFree(key_);
}

void* ThreadSlot::Get() const noexcept { return hasKey_ ? FlsGetValue(key_) : nullptr; }

bool ThreadSlot::Set(void* value) noexcept { return hasKey_ && FlsSetValue(key_, value) != 0; }

}  // namespace zentor::os
