#include "util/thread_slot.h"

#include <pthread.h>

namespace zentor::os {

ThreadSlot::ThreadSlot(Free free) noexcept {
    pthread_key_t key;
    hasKey_ = pthread_key_create(&key, free) == 0;
    if (hasKey_) key_ = key;
}

ThreadSlot::~ThreadSlot() {
    if (hasKey_) pthread_key_delete(static_cast<pthread_key_t>(key_));
}

void* ThreadSlot::Get() const noexcept {
    return hasKey_ ? pthread_getspecific(static_cast<pthread_key_t>(key_)) : nullptr;
}

bool ThreadSlot::Set(void* value) noexcept {
    return hasKey_ && pthread_setspecific(static_cast<pthread_key_t>(key_), value) == 0;
}

}  // namespace zentor::os
