// What all benchmark programs share: how they fail, and their arguments that are numbers.
#ifndef ZENTOR_BENCH_ARGUMENTS_H
#define ZENTOR_BENCH_ARGUMENTS_H

#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <system_error>

namespace bench {

[[noreturn]] inline void Fail(const char* what) {
    std::perror(what);
    std::exit(EXIT_FAILURE);
}

inline std::uint64_t CountArgument(std::string_view text) {
    std::uint64_t count = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), count);
    if (error != std::errc() || end != text.data() + text.size()) {
        std::fprintf(stderr, "not a count: %.*s\n", static_cast<int>(text.size()), text.data());
        std::exit(EXIT_FAILURE);
    }
    return count;
}

}  // namespace bench

#endif
