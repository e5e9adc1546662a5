#include "util/thread_slot.h"

#include <pthread.h>

#include <new>

namespace zentor::os {

ThreadSlot::ThreadSlot(Free free) {
    pthread_key_t key;
    if (pthread_key_create(&key, free) != 0) throw std::bad_alloc();
    key_ = key;
}

ThreadSlot::~ThreadSlot() { pthread_key_delete(static_cast<pthread_key_t>(key_)); }

void* ThreadSlot::Get() const noexcept { return pthread_getspecific(static_cast<pthread_key_t>(key_)); }

bool ThreadSlot::Set(void* value) noexcept { return pthread_setspecific(static_cast<pthread_key_t>(key_), value) == 0; }

}  // namespace zentor::os
