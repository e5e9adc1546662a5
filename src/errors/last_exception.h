// The latest failure of each thread.
#pragma once

#include <cstdint>
#include <exception>
#include <memory>
#include <string>
#include <utility>

namespace zentor {

struct LastException {
    std::uint32_t code = 0;
    std::string message;
    std::int64_t extra1 = 0;
    std::int64_t extra2 = 0;
};

// The text of a report that has no message of its own.
inline constexpr const char* kUnknownExceptionText = "Unknown exception";

// The calling thread's record; null until its first failure. It stays as it is while it is held.
std::shared_ptr<const LastException> GetLastException() noexcept;
// Replaces the calling thread's record. Without memory for it the thread has none.
void SetLastException(LastException record) noexcept;
void ClearLastException() noexcept;

// Replaces the calling thread's record by one that GetLastException gave before.
void RestoreLastException(std::shared_ptr<const LastException> record) noexcept;

// For looking whether something works, when it is no failure that it does not: gives the record back that there was at
// the beginning of the scope, unless the scope is left by an exception, which then is the latest failure.
class LastExceptionScope {
public:
    LastExceptionScope() noexcept : before_(GetLastException()), exceptions_(std::uncaught_exceptions()) {}
    ~LastExceptionScope() {
        if (std::uncaught_exceptions() == exceptions_) RestoreLastException(std::move(before_));
    }
    LastExceptionScope(const LastExceptionScope&) = delete;
    LastExceptionScope& operator=(const LastExceptionScope&) = delete;

private:
    std::shared_ptr<const LastException> before_;
    int exceptions_;
};

}  // namespace zentor
