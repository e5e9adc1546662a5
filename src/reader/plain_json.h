// Reads JSON that is plain: keys that are known, each at most once and without escapes. That is far less than JSON
// allows, and what writers make; it can be read in a fraction of the time.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "util/json_cursor.h"

namespace zentor {

// Keys of one kind of object, with their quotes, in the order in which they usually come.
template <std::size_t N>
using PlainKeys = std::array<std::string_view, N>;

// A set of keys has a bit for each.
constexpr unsigned KeyBit(std::size_t key) { return 1u << key; }

// A position in a text. Every function that reads is false where the text is not plain, and then the reading is over.
class PlainJson {
public:
    PlainJson(std::string_view bytes, std::size_t offset) : cursor_(bytes, offset) {}

    std::size_t Offset() const { return cursor_.Offset(); }
    // What comes next; 0 at the end.
    char Peek() const { return cursor_.AtEnd() ? '\0' : cursor_.Peek(); }
    void SkipSpace() { cursor_.SkipWhiteSpace(); }
    bool Take(char c) { return cursor_.Skip(c); }

    // Reads an object member by member: `member` takes the value of the key with a number. Sets which keys there are;
    // each may be there once.
    template <std::size_t N, class Member>
    bool Object(const PlainKeys<N>& keys, unsigned& found, Member&& member) {
        if (!cursor_.Skip('{')) return false;
        SkipSpace();
        found = 0;
        if (cursor_.Skip('}')) return true;
        for (std::size_t usual = 0;;) {
            std::size_t key = usual;
            while (key < N && !cursor_.SkipWord(keys[key])) ++key;
            if (key == N) {
                for (key = 0; key < usual && !cursor_.SkipWord(keys[key]);) ++key;
                if (key == usual) return false;
            }
            if ((found & KeyBit(key)) != 0) return false;
            found |= KeyBit(key);
            usual = key + 1;
            SkipSpace();
            if (!cursor_.Skip(':')) return false;
            SkipSpace();
            if (!member(key)) return false;
            SkipSpace();
            if (cursor_.Skip('}')) return true;
            if (!cursor_.Skip(',')) return false;
            SkipSpace();
        }
    }

    // `item` takes each element.
    template <class Item>
    bool Array(std::size_t& count, Item&& item) {
        count = 0;
        if (!cursor_.Skip('[')) return false;
        SkipSpace();
        if (cursor_.Skip(']')) return true;
        for (;;) {
            if (!item()) return false;
            ++count;
            SkipSpace();
            if (cursor_.Skip(']')) return true;
            if (!cursor_.Skip(',')) return false;
            SkipSpace();
        }
    }

    // Any text; escapes stay.
    bool String() {
        RawString ignored;
        return cursor_.TakeString(ignored);
    }
    // A text without escapes.
    bool String(std::string_view& text) {
        RawString string;
        if (!cursor_.TakeString(string) || string.hasBackslash) return false;
        text = string.text;
        return true;
    }
    bool Boolean(bool& value) {
        value = Peek() == 't';
        return cursor_.SkipWord(value ? "true" : "false");
    }
    // A number of which nobody asks the value. One that may be beyond a double is not plain.
    bool Number() {
        cursor_.Skip('-');
        const std::size_t integer = Offset();
        if (!cursor_.Skip('0')) cursor_.SkipDigits();
        const std::size_t digits = Offset() - integer;
        constexpr std::size_t kSurelyDouble = 300;
        if (digits == 0 || digits > kSurelyDouble) return false;
        if (cursor_.Skip('.') && !TakeDigits()) return false;
        if (!cursor_.Skip('e') && !cursor_.Skip('E')) return true;
        const bool isNegative = cursor_.Skip('-');
        if (!isNegative) cursor_.Skip('+');
        const std::size_t exponent = Offset();
        return TakeDigits() && (isNegative || (digits < 200 && Offset() - exponent <= 2));
    }
    // A whole number of at most 15 digits.
    bool Count(std::uint64_t& count) {
        const std::size_t begin = Offset();
        count = 0;
        if (!cursor_.Skip('0')) {
            for (char c = Peek(); IsDigit(c); c = Peek()) {
                count = count * 10 + static_cast<std::uint64_t>(c - '0');
                cursor_.Skip(c);
                if (Offset() - begin == 15) return false;
            }
        }
        return Offset() != begin && Peek() != '.' && (Peek() | 0x20) != 'e';
    }

private:
    bool TakeDigits() {
        const std::size_t begin = Offset();
        cursor_.SkipDigits();
        return Offset() != begin;
    }

    JsonCursor cursor_;
};

}  // namespace zentor
