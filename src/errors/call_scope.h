// Which operations a thread is in, so that a callback cannot take away what is calling it.
#pragma once

namespace zentor {

// An operation of an object of the host's, for as long as it runs. Operations nest when callbacks call the library.
class CallScope {
public:
    explicit CallScope(const void* object) noexcept;
    ~CallScope();
    CallScope(const CallScope&) = delete;
    CallScope& operator=(const CallScope&) = delete;

    // Whether the calling thread is in an operation of `object`, or in one of any object.
    static bool IsIn(const void* object) noexcept;
    static bool IsInAny() noexcept;

private:
    const void* object_;
    CallScope* outer_;
};

}  // namespace zentor
