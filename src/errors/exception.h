// The exceptions of the library. Neither of them ever crosses a module boundary.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

#include "errors/include/plugin_exception.h"

namespace ns_sensor {

// A failure inside the library: code, finished message and two details (-1 when absent). Raised only by zentor::Raise,
// which also keeps a copy for the thread.
class ZT_Exception : public std::runtime_error {
public:
    ZT_Exception(std::uint32_t code, const std::string& message, std::int64_t extra1, std::int64_t extra2)
        : std::runtime_error(message), code_(code), extra1_(extra1), extra2_(extra2) {}

    std::uint32_t code() const noexcept { return code_; }
    std::int64_t extra1() const noexcept { return extra1_; }
    std::int64_t extra2() const noexcept { return extra2_; }

private:
    std::uint32_t code_;
    std::int64_t extra1_;
    std::int64_t extra2_;
};

}  // namespace ns_sensor
