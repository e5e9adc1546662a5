// A fixed text followed by a number that counts up from 0.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string_view>

namespace zentor {

// It counts in its digits: formatting each number anew would take longer than everything else about a name. Names are
// cut to `kMost` bytes.
template <std::size_t kMost>
class CountingName {
public:
    explicit CountingName(std::string_view prefix) : digits_(std::min(prefix.size(), kMost)), end_(digits_) {
        std::memcpy(bytes_, prefix.data(), digits_);
    }

    // The next name; lives until the next call.
    std::string_view Next() {
        CountUp();
        return {bytes_, std::min(end_, kMost)};
    }

private:
    static constexpr std::size_t kMostDigits = 20;

    void CountUp() {
        std::size_t at = end_;
        while (at > digits_ && bytes_[at - 1] == '9') bytes_[--at] = '0';
        if (at > digits_) {
            ++bytes_[at - 1];
        } else {  // the first number, or one digit more
            bytes_[digits_] = end_ == digits_ ? '0' : '1';
            if (end_ != digits_) bytes_[end_] = '0';
            ++end_;
        }
    }

    std::size_t digits_;  // where the number begins
    std::size_t end_;
    char bytes_[kMost + kMostDigits];
};

}  // namespace zentor
