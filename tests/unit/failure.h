// What calls raise, and file operations that fail on demand.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "errors/exception.h"
#include "files/file_io.h"

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
        before_.clear();
        zentor::SetFileFaultHook(&Next);
    }
    ~FileFault() { zentor::SetFileFaultHook(nullptr); }
    FileFault(const FileFault&) = delete;
    FileFault& operator=(const FileFault&) = delete;

    // Of the latest fault, whether it still lives or not: the name of the operation that failed, empty while none has,
    // and how many have gone before, or have of one name.
    static const std::string& Struck() { return struck_; }
    static std::size_t CountBefore() { return before_.size(); }
    static auto CountBefore(const std::string& operation) {
        return std::count(before_.begin(), before_.end(), operation);
    }

private:
    static zentor::os::Status Next(const char* name) {
        const bool counts = operation_.empty() || operation_ == name;
        if (!counts || --remaining_ != 0) {
            if (struck_.empty()) before_.emplace_back(name);
            return zentor::os::Status::kOk;
        }
        struck_ = name;
        return status_;
    }

    static inline std::string operation_;
    static inline int remaining_ = 0;
    static inline zentor::os::Status status_ = zentor::os::Status::kOk;
    static inline std::string struck_;
    static inline std::vector<std::string> before_;
};

}  // namespace zentor_test
