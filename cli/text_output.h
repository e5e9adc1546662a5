// Texts for people.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace zentor_cli {

// The shortest text that reads back as the same number.
std::string NumberText(double value);
// With a blank between two of them.
std::string NumbersText(std::span<const double> values);

// A text of a document for a terminal: control characters show as \u001b, bytes that are not UTF-8 as replacement
// characters.
std::string Printable(std::string_view text);

// With blanks after it, to be at least `width` bytes wide.
std::string Padded(std::string text, std::size_t width);

// A line of a result: the name, a colon, blanks and the value.
void PrintField(const std::string& name, const std::string& value);
// The same with a text of a document, made printable.
void PrintTextField(const std::string& name, std::string_view text);

}  // namespace zentor_cli
