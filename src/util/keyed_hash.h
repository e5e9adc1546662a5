// A hash of texts from outside: SipHash with one round a word and three at the end, under a key that nobody knows, so
// that nobody can choose texts that collide.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace zentor {

class KeyedHash {
public:
    using is_transparent = void;

    KeyedHash();  // a key of its own
    KeyedHash(std::uint64_t key0, std::uint64_t key1) : key0_(key0), key1_(key1) {}

    std::uint64_t operator()(std::string_view text) const;

private:
    std::uint64_t key0_;
    std::uint64_t key1_;
};

}  // namespace zentor
