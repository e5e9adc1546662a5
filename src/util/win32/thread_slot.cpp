#include "util/thread_slot.h"

#include <windows.h>

#include <new>

namespace zentor::os {

// A fiber-local slot: its callback runs when a thread ends, and for the values of all threads when the slot goes.
ThreadSlot::ThreadSlot(Free free) : key_(FlsAlloc(free)) {
    if (key_ == FLS_OUT_OF_INDEXES) throw std::bad_alloc();
}

ThreadSlot::~ThreadSlot() { FlsFree(key_); }

void* ThreadSlot::Get() const noexcept { return FlsGetValue(key_); }

bool ThreadSlot::Set(void* value) noexcept { return FlsSetValue(key_, value) != 0; }

}  // namespace zentor::os
