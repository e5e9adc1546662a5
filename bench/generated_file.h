// What the generators of recordings share. All arithmetic is on integers, so the bytes are the same on every machine.
#ifndef ZENTOR_BENCH_GENERATED_FILE_H
#define ZENTOR_BENCH_GENERATED_FILE_H

#include <array>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <string_view>
#include <vector>

#include "arguments.h"

namespace bench {

class SplitMix64 {
public:
    std::uint64_t Next() {
        m_state += 0x9E3779B97F4A7C15u;
        std::uint64_t mixed = m_state;
        mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9u;
        mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBu;
        return mixed ^ (mixed >> 31);
    }
    // A number from -spread to spread. The slight bias of the remainder does not matter here.
    std::int64_t Around(std::int64_t spread) {
        return static_cast<std::int64_t>(Next() % static_cast<std::uint64_t>(2 * spread + 1)) - spread;
    }

private:
    std::uint64_t m_state = 20240229;
};

class GeneratedFile {
public:
    explicit GeneratedFile(const char* path) : m_file(std::fopen(path, "wb")), m_buffer(1 << 20) {
        if (m_file == nullptr) Fail(path);
    }
    GeneratedFile(const GeneratedFile&) = delete;
    GeneratedFile& operator=(const GeneratedFile&) = delete;

    void Text(std::string_view text) {
        if (m_buffer.size() - m_used < text.size()) Flush();
        text.copy(m_buffer.data() + m_used, text.size());
        m_used += text.size();
    }
    // `value` counts units of the last decimal.
    void Number(std::int64_t value, int decimals) {
        std::array<char, 24> digits;
        if (value < 0) Text("-");
        std::uint64_t scale = 1;
        for (int i = 0; i < decimals; ++i) scale *= 10;
        const std::uint64_t magnitude = static_cast<std::uint64_t>(value < 0 ? -value : value);
        Text({digits.data(), std::to_chars(digits.begin(), digits.end(), magnitude / scale).ptr});
        if (decimals == 0) return;
        // The one above the fraction keeps its leading zeros; the point takes its place.
        char* const end = std::to_chars(digits.begin(), digits.end(), scale + magnitude % scale).ptr;
        digits[0] = '.';
        Text({digits.data(), end});
    }
    void Close() {
        Flush();
        if (std::fclose(m_file) != 0) Fail("close");
    }

private:
    void Flush() {
        if (std::fwrite(m_buffer.data(), 1, m_used, m_file) != m_used) Fail("write");
        m_used = 0;
    }

    std::FILE* m_file;
    std::vector<char> m_buffer;
    std::size_t m_used = 0;
};

}  // namespace bench

#endif
