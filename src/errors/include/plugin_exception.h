// A failure on the converting side.
#pragma once

#include <cstdint>

namespace ZT_PLUGIN {

// A bare code with two details (-1: none), without a message: the library gives it one. It never crosses a module
// boundary: each side catches it and hands on the code.
class ZT_PluginException {
public:
    explicit ZT_PluginException(std::uint32_t code, std::int64_t extra1 = -1, std::int64_t extra2 = -1) noexcept
        : code_(code), extra1_(extra1), extra2_(extra2) {}

    std::uint32_t code() const noexcept { return code_; }
    std::int64_t extra1() const noexcept { return extra1_; }
    std::int64_t extra2() const noexcept { return extra2_; }

private:
    std::uint32_t code_;
    std::int64_t extra1_;
    std::int64_t extra2_;
};

}  // namespace ZT_PLUGIN
