// Numbers as tables write them.
#pragma once

#include <string>
#include <string_view>

namespace series {

// What stands before the decimals; the other one of the two may stand between groups of three digits.
enum class Decimal : char { kPoint = '.', kComma = ',' };

// What a cell says of the two, by its form alone.
enum class NumberSign {
    kNone,          // no number, or one that both read alike
    kPoint,         // "1.5", "1,234.5": a number with decimal points alone
    kComma,         // "1,5", "1.234,5"
    kGroupOrComma,  // "1,234": a group with points, decimals with commas
};
NumberSign SignOf(std::string_view cell);

// Whether a cell, blanks around it aside, is a decimal number: an optional sign, digits with an optional mark before
// decimals and others between groups of three, an optional exponent. Sets `digits` to it as the library wants it: the
// cell's own bytes where they are that already, else those of `room`. No number is what a double cannot hold.
bool ReadNumber(std::string_view cell, Decimal decimal, std::string& room, std::string_view& digits);

// Whether a text is a number for certain, as the library wants it: an optional "-", digits, perhaps a point and digits.
// Others may be numbers as well.
bool IsPlainNumber(std::string_view text);

// Whether a cell says that there is no value: "NaN", "n/a", "-", "#N/A", "inf" and the like.
bool IsMarker(std::string_view cell);

}  // namespace series
