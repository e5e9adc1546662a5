// The samples of generated documents: for the generator, which writes them, and for the programs that compare what they
// are given. Six nodes have as many samples each, at 30 frames a second; the values of every second one are arrays.
#ifndef ZENTOR_BENCH_GENERATED_SAMPLES_H
#define ZENTOR_BENCH_GENERATED_SAMPLES_H

#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "arguments.h"

namespace bench {

inline constexpr int kSampleNodes = 6;
inline constexpr std::uint32_t kFramesPerSecond = 30;
inline constexpr std::uint64_t kFramesPerDay = kFramesPerSecond * 86400;
inline constexpr std::size_t kArraySize = 3;

inline bool IsArrayNode(int node) { return node % 2 == 1; }

// With more samples than a day has frames, some share a time.
inline std::uint64_t FrameOf(std::uint64_t sample, std::uint64_t count) {
    return count <= kFramesPerDay ? sample : sample * kFramesPerDay / count;
}

// The first sample at or after a frame, which is `count` when there is none.
inline std::uint64_t FirstSampleFrom(std::uint64_t frame, std::uint64_t count) {
    if (count <= kFramesPerDay) return frame < count ? frame : count;
    const std::uint64_t sample = (frame * count + kFramesPerDay - 1) / kFramesPerDay;
    return sample < count ? sample : count;
}

inline void AppendDigits(std::string& text, std::uint64_t value, std::size_t width) {
    const std::size_t start = text.size();
    text.append(width, '0');
    for (std::size_t i = text.size(); i > start && value != 0; value /= 10) {
        text[--i] = static_cast<char>('0' + value % 10);
    }
}

inline void AppendTime(std::string& text, std::uint64_t frame) {
    AppendDigits(text, frame / 108000, 2);
    text += ':';
    AppendDigits(text, frame / 1800 % 60, 2);
    text += ':';
    AppendDigits(text, frame / 30 % 60, 2);
    text += ':';
    AppendDigits(text, frame % 30, 2);
}

inline void AppendNumber(std::string& text, int node, std::uint64_t sample, std::size_t element) {
    const std::uint64_t a = sample * 7919 % 100000000;
    const std::uint64_t b = sample * 104729 % 10000000;
    const auto append = [&](char sign, std::uint64_t integer, std::size_t integerDigits, std::uint64_t decimals,
                            std::size_t decimalDigits) {
        text += sign;
        AppendDigits(text, integer, integerDigits);
        text += '.';
        AppendDigits(text, decimals, decimalDigits);
    };
    if (!IsArrayNode(node)) {
        append(sample % 3 == 0 ? '-' : '+', a, 20, b, 23);
    } else if (element == 0) {
        append('+', a % 1000, 3, a / 1000 % 10000, 4);
    } else if (element == 1) {
        append('-', b % 1000, 3, b / 1000 % 10000, 4);
    } else {
        append('+', a / 10 % 1000, 3, b % 10000, 4);
    }
}

// The texts of one sample, read. Objects are used again and again to save allocations.
class ExpectedSample {
public:
    void Set(int node, std::uint64_t sample, std::uint64_t count) {
        m_time.clear();
        AppendTime(m_time, FrameOf(sample, count));
        m_size = IsArrayNode(node) ? kArraySize : 1;
        for (std::size_t i = 0; i < m_size; ++i) {
            m_number.clear();
            AppendNumber(m_number, node, sample, i);
            const char* const start = m_number.data() + (m_number[0] == '+' ? 1 : 0);
            const char* const end = m_number.data() + m_number.size();
            if (std::from_chars(start, end, m_values[i]).ptr != end) Fail("number");
        }
    }
    bool Is(std::string_view time, const double* values, std::size_t size) const {
        if (time != m_time || size != m_size) return false;
        for (std::size_t i = 0; i < size; ++i) {
            if (values[i] != m_values[i]) return false;
        }
        return true;
    }

private:
    std::string m_time;
    std::string m_number;
    std::array<double, kArraySize> m_values{};
    std::size_t m_size = 0;
};

}  // namespace bench

#endif
