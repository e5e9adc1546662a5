// A hash of texts from outside: SipHash with one round a word and three at the end, under a key of this process that
// nobody knows, so that nobody can choose texts that collide.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace zentor {

class KeyedHash {
public:
    using is_transparent = void;

    std::uint64_t operator()(std::string_view text) const;
};

}  // namespace zentor
