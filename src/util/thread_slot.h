// One pointer for each thread.
#pragma once

namespace zentor::os {

// Frees a thread's value when the thread ends, and forgets all when it goes itself, with the library: unlike a
// thread_local object with a destructor, it does not keep a Windows library loaded after the host has let go of it.
class ThreadSlot {
public:
    using Free = void (*)(void* value);

    // `free` may be null: values then free themselves. Where the system has no slot left, every thread stays without a
    // value.
    explicit ThreadSlot(Free free) noexcept;
    ~ThreadSlot();
    ThreadSlot(const ThreadSlot&) = delete;
    ThreadSlot& operator=(const ThreadSlot&) = delete;

    // Null until the calling thread has set a value.
    void* Get() const noexcept;
    // Takes the value over; the one before is the caller's again. False when the system has no room for it.
    bool Set(void* value) noexcept;

private:
    unsigned long key_ = 0;
    bool hasKey_ = false;
};

}  // namespace zentor::os
