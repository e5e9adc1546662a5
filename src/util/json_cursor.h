// A position in the bytes of a document, and the tokens that begin there. Raises nothing: whoever reads knows which
// property a fault belongs to.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "util/number_text.h"

namespace zentor {

// A string between its quotes.
struct RawString {
    std::string_view text;
    bool hasBackslash = false;

    // With its escapes decoded.
    std::string Decoded() const;
};

enum class NumberStatus {
    kOk,
    kNoDigit,     // no digit where the number begins
    kNoFraction,  // a point without a digit after it
    kNoExponent,  // an "e" without a digit after it
    kTooBig,      // the integer part is beyond the largest double
    kOverflow,    // the exponent takes the number beyond it
};

// The text of a string with its JSON escapes decoded to UTF-8. A backslash that begins no JSON escape, an escape for a
// surrogate without its other half among them, stays as it is.
std::string DecodeEscapes(std::string_view text);

// The code unit of an escape such as \u00e9 at the beginning of `text`; false when there is none.
bool ReadUnicodeEscape(std::string_view text, std::uint32_t& unit);

class JsonCursor {
public:
    explicit JsonCursor(std::string_view bytes, std::size_t offset = 0)
        : start_(bytes.data()), next_(start_ + offset), end_(start_ + bytes.size()) {}

    bool AtEnd() const { return next_ == end_; }
    char Peek() const { return *next_; }  // not at the end
    std::size_t Offset() const { return static_cast<std::size_t>(next_ - start_); }
    std::string_view Bytes() const { return {start_, static_cast<std::size_t>(end_ - start_)}; }
    void MoveTo(std::size_t offset) { next_ = start_ + offset; }

    // Space, tab, line feed and carriage return.
    void SkipWhiteSpace() {
        while (next_ != end_ && *next_ <= ' ' &&
               (*next_ == ' ' || *next_ == '\n' || *next_ == '\r' || *next_ == '\t')) {
            ++next_;
        }
    }
    // Takes the byte `c`; false, without moving, when something else or nothing is next.
    bool Skip(char c) {
        if (next_ == end_ || *next_ != c) return false;
        ++next_;
        return true;
    }
    bool SkipWord(std::string_view word) {
        if (static_cast<std::size_t>(end_ - next_) < word.size()) return false;
        if (std::memcmp(next_, word.data(), word.size()) != 0) return false;
        next_ += word.size();
        return true;
    }
    // Whether the bytes end within this word.
    bool IsCutWord(std::string_view word) const {
        return word.starts_with(std::string_view(next_, static_cast<std::size_t>(end_ - next_)));
    }

    // Takes a string with its quotes; false, without moving, when one of them is missing. A quote after a backslash
    // does not end it.
    bool TakeString(RawString& string);
    // Takes a JSON number; after a failure the cursor is at the byte that is wrong. A number too small for a double
    // is 0.
    NumberStatus TakeNumber(double& value);
    // Goes past one value of a text that has been read before; to the end of the bytes where they end within it.
    void SkipValue();
    // Goes past a number or a word, up to what can follow it.
    void SkipScalar() {
        while (next_ != end_ && !kEndsScalar[static_cast<unsigned char>(*next_)]) ++next_;
    }

    void SkipDigits() {
        while (next_ != end_ && IsDigit(*next_)) ++next_;
    }

private:
    static constexpr std::array<bool, 256> kEndsScalar = [] {
        std::array<bool, 256> ends{};
        for (const char c : {' ', '\t', '\n', '\r', ',', ']', '}'}) ends[static_cast<unsigned char>(c)] = true;
        return ends;
    }();

    const char* start_;
    const char* next_;
    const char* end_;
};

}  // namespace zentor
