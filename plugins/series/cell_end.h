// Finds where cells end, 16 bytes at a time where the machine can.
#pragma once

#include <cstddef>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace series {

class CellEnd {
public:
    // So many bytes behind the place where it has to stop can be read.
    static constexpr std::size_t kRoom = 16;

    // `delimiter2`: another one, or the same.
    CellEnd(char delimiter, char delimiter2) : delimiter_(delimiter), delimiter2_(delimiter2) {}

    // The first delimiter, LF or CR from here on, which has to be there.
    const char* Find(const char* from) const {
#if defined(__SSE2__)
        const __m128i delimiter = _mm_set1_epi8(delimiter_);
        const __m128i delimiter2 = _mm_set1_epi8(delimiter2_);
        const __m128i lf = _mm_set1_epi8('\n');
        const __m128i cr = _mm_set1_epi8('\r');
        for (;; from += kRoom) {
            const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
            const __m128i delimiters =
                _mm_or_si128(_mm_cmpeq_epi8(bytes, delimiter), _mm_cmpeq_epi8(bytes, delimiter2));
            const __m128i ends = _mm_or_si128(_mm_cmpeq_epi8(bytes, lf), _mm_cmpeq_epi8(bytes, cr));
            const int mask = _mm_movemask_epi8(_mm_or_si128(delimiters, ends));
            if (mask != 0) return from + __builtin_ctz(static_cast<unsigned>(mask));
        }
#else
        while (*from != delimiter_ && *from != delimiter2_ && *from != '\n' && *from != '\r') ++from;
        return from;
#endif
    }

private:
    char delimiter_;
    char delimiter2_;
};

}  // namespace series
