// Reads JSON that is plain: keys that are known, each at most once and without escapes. That is far less than JSON
// allows, and what writers make; it can be read in a fraction of the time.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "util/number_text.h"

namespace zentor {

// Keys of one kind of object, with their quotes, in the order in which they usually come.
template <std::size_t N>
using PlainKeys = std::array<std::string_view, N>;

// A set of keys has a bit for each.
constexpr unsigned KeyBit(std::size_t key) { return 1u << key; }

// A position in a text. Every function that reads is false where the text is not plain, and then the reading is over.
class PlainJson {
public:
    PlainJson(std::string_view bytes, std::size_t offset)
        : start_(bytes.data()), next_(start_ + offset), end_(start_ + bytes.size()) {}

    std::size_t Offset() const { return static_cast<std::size_t>(next_ - start_); }
    // What comes next; 0 at the end.
    char Peek() const { return next_ == end_ ? '\0' : *next_; }

    void SkipSpace() {
        while (next_ != end_ && *next_ <= ' ' &&
               (*next_ == ' ' || *next_ == '\n' || *next_ == '\r' || *next_ == '\t')) {
            ++next_;
        }
    }
    bool Take(char c) {
        if (next_ == end_ || *next_ != c) return false;
        ++next_;
        return true;
    }

    // Reads an object member by member: `member` takes the value of the key with a number. Sets which keys there are;
    // each may be there once.
    template <std::size_t N, class Member>
    bool Object(const PlainKeys<N>& keys, unsigned& found, Member&& member) {
        if (!Take('{')) return false;
        SkipSpace();
        found = 0;
        if (Take('}')) return true;
        for (std::size_t usual = 0;;) {
            std::size_t key = usual;
            while (key < N && !TakeText(keys[key])) ++key;
            if (key == N) {
                for (key = 0; key < usual && !TakeText(keys[key]);) ++key;
                if (key == usual) return false;
            }
            if ((found & KeyBit(key)) != 0) return false;
            found |= KeyBit(key);
            usual = key + 1;
            SkipSpace();
            if (!Take(':')) return false;
            SkipSpace();
            if (!member(key)) return false;
            SkipSpace();
            if (Take('}')) return true;
            if (!Take(',')) return false;
            SkipSpace();
        }
    }

    // `item` takes each element.
    template <class Item>
    bool Array(std::size_t& count, Item&& item) {
        count = 0;
        if (!Take('[')) return false;
        SkipSpace();
        if (Take(']')) return true;
        for (;;) {
            if (!item()) return false;
            ++count;
            SkipSpace();
            if (Take(']')) return true;
            if (!Take(',')) return false;
            SkipSpace();
        }
    }

    // Any text; escapes stay.
    bool String() {
        if (!Take('"')) return false;
        for (; next_ != end_; ++next_) {
            if (*next_ == '"') {
                ++next_;
                return true;
            }
            if (*next_ == '\\' && ++next_ == end_) return false;
        }
        return false;
    }
    // A text without escapes.
    bool String(std::string_view& text) {
        if (!Take('"')) return false;
        const char* const begin = next_;
        while (next_ != end_ && *next_ != '"' && *next_ != '\\') ++next_;
        text = {begin, static_cast<std::size_t>(next_ - begin)};
        return Take('"');
    }
    bool Boolean(bool& value) {
        value = next_ != end_ && *next_ == 't';
        return TakeText(value ? "true" : "false");
    }
    // A number of which nobody asks the value. One that may be beyond a double is not plain.
    bool Number() {
        Take('-');
        const char* const integer = next_;
        if (!Take('0')) SkipDigits();
        const std::ptrdiff_t digits = next_ - integer;
        constexpr std::ptrdiff_t kSurelyDouble = 300;
        if (digits == 0 || digits > kSurelyDouble) return false;
        if (Take('.')) {
            const char* const fraction = next_;
            SkipDigits();
            if (next_ == fraction) return false;
        }
        if (next_ == end_ || (*next_ | 0x20) != 'e') return true;
        ++next_;
        const bool isNegative = Take('-');
        if (!isNegative) Take('+');
        const char* const exponent = next_;
        SkipDigits();
        return next_ != exponent && (isNegative || (digits < 200 && next_ - exponent <= 2));
    }
    // A whole number of at most 15 digits.
    bool Count(std::uint64_t& count) {
        const char* const begin = next_;
        count = 0;
        if (!Take('0')) {
            for (; next_ != end_ && IsDigit(*next_); ++next_) {
                count = count * 10 + static_cast<std::uint64_t>(*next_ - '0');
                if (next_ - begin == 15) return false;
            }
        }
        return next_ != begin && (next_ == end_ || (*next_ != '.' && (*next_ | 0x20) != 'e'));
    }

private:
    bool TakeText(std::string_view text) {
        if (static_cast<std::size_t>(end_ - next_) < text.size()) return false;
        if (std::memcmp(next_, text.data(), text.size()) != 0) return false;
        next_ += text.size();
        return true;
    }
    void SkipDigits() {
        while (next_ != end_ && IsDigit(*next_)) ++next_;
    }

    const char* start_;
    const char* next_;
    const char* end_;
};

}  // namespace zentor
