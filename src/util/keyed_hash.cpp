#include "util/keyed_hash.h"

#include <bit>
#include <chrono>
#include <exception>
#include <random>

namespace zentor {

namespace {

std::uint64_t RandomWord() {
    try {
        std::random_device device;
        return std::uint64_t{device()} << 32 | device();
    } catch (const std::exception&) {
        // A system that gives no random numbers: what is left differs at least from run to run.
        static const char place = 0;
        const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
        return static_cast<std::uint64_t>(now) * 0x9E3779B97F4A7C15u ^ reinterpret_cast<std::uintptr_t>(&place);
    }
}

// The first byte is the lowest, whatever the machine.
std::uint64_t Word(const char* bytes, std::size_t count) {
    std::uint64_t word = 0;
    for (std::size_t k = 0; k < count; ++k) {
        word |= std::uint64_t{static_cast<unsigned char>(bytes[k])} << (8 * k);
    }
    return word;
}

struct State {
    std::uint64_t v0, v1, v2, v3;

    void Round() {
        v0 += v1;
        v1 = std::rotl(v1, 13) ^ v0;
        v0 = std::rotl(v0, 32);
        v2 += v3;
        v3 = std::rotl(v3, 16) ^ v2;
        v0 += v3;
        v3 = std::rotl(v3, 21) ^ v0;
        v2 += v1;
        v1 = std::rotl(v1, 17) ^ v2;
        v2 = std::rotl(v2, 32);
    }
    void Take(std::uint64_t word) {
        v3 ^= word;
        Round();
        v0 ^= word;
    }
};

}  // namespace

std::uint64_t KeyedHash::operator()(std::string_view text) const {
    static const std::uint64_t key0 = RandomWord();
    static const std::uint64_t key1 = RandomWord();
    State state{key0 ^ 0x736F6D6570736575u, key1 ^ 0x646F72616E646F6Du, key0 ^ 0x6C7967656E657261u,
                key1 ^ 0x7465646279746573u};
    const std::size_t whole = text.size() & ~std::size_t{7};
    for (std::size_t at = 0; at < whole; at += 8) state.Take(Word(text.data() + at, 8));
    state.Take(std::uint64_t{text.size()} << 56 | Word(text.data() + whole, text.size() - whole));
    state.v2 ^= 0xFF;
    for (int round = 0; round < 3; ++round) state.Round();
    return state.v0 ^ state.v1 ^ state.v2 ^ state.v3;
}

}  // namespace zentor
