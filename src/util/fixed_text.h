// Texts that the compiler knows, and puts together.
#pragma once

#include <cstddef>
#include <string_view>

namespace zentor {

// A literal that can be an argument of a template. N counts the terminating zero, too.
template <std::size_t N>
struct FixedText {
    char bytes[N] = {};

    constexpr FixedText() = default;
    consteval FixedText(const char (&text)[N]) {
        for (std::size_t k = 0; k < N; ++k) bytes[k] = text[k];
    }

    static constexpr std::size_t size() { return N - 1; }
    constexpr operator std::string_view() const { return {bytes, N - 1}; }
    friend constexpr bool operator==(std::string_view text, const FixedText& fixed) {
        return text == std::string_view(fixed);
    }
};

template <FixedText... parts>
consteval auto Join() {
    FixedText<(parts.size() + ... + 1)> joined;
    char* out = joined.bytes;
    const auto put = [&out](std::string_view part) {
        for (const char c : part) *out++ = c;
    };
    (put(parts), ...);
    return joined;
}

// The parts one after the other.
template <FixedText... parts>
inline constexpr auto kJoined = Join<parts...>();

// Parts of JSON: "word", "word": and ,"word":
template <FixedText word>
inline constexpr auto kQuoted = kJoined<"\"", word, "\"">;
template <FixedText word>
inline constexpr auto kKey = kJoined<"\"", word, "\":">;
template <FixedText word>
inline constexpr auto kNextKey = kJoined<",\"", word, "\":">;

}  // namespace zentor
