// What calls raise, and file operations that fail on demand.
#pragma once

#include <string>

#include "errors/exception.h"
#include "util/file_io.h"

namespace zentor_test {

// What `call` raises, as "code: message", with the first detail in brackets unless it is -1; empty for nothing.
template <class Call>
std::string FailureOf(Call&& call) {
    try {
        call();
        return {};
    } catch (const ns_sensor::ZT_Exception& failure) {
        const std::string detail = failure.extra1() == -1 ? "" : " [" + std::to_string(failure.extra1()) + "]";
        return std::to_string(failure.code()) + ": " + failure.what() + detail;
    }
}

// While it lives, the n-th file operation (counted from 1) ends with `status` without having been tried. Only
// operations with the given name count; all do when it is empty. One fault at a time.
class FileFault {
public:
    FileFault(const std::string& operation, int n, zentor::os::Status status) {
        operation_ = operation;
        remaining_ = n;
        status_ = status;
        struck_.clear();
        zentor::SetFileFaultHook([](const char* name) {
            if ((!operation_.empty() && operation_ != name) || --remaining_ != 0) return zentor::os::Status::kOk;
            struck_ = name;
            return status_;
        });
    }
    ~FileFault() { zentor::SetFileFaultHook(nullptr); }
    FileFault(const FileFault&) = delete;
    FileFault& operator=(const FileFault&) = delete;

    // The name of the operation that failed; empty while none has.
    const std::string& Struck() const { return struck_; }

private:
    static inline std::string operation_;
    static inline int remaining_ = 0;
    static inline zentor::os::Status status_ = zentor::os::Status::kOk;
    static inline std::string struck_;
};

}  // namespace zentor_test
