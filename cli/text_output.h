// Texts for people.
#pragma once

#include <string>

namespace zentor_cli {

// The shortest text that reads back as the same number.
std::string NumberText(double value);

// A text of a document for a terminal: control characters show as \u001b, bytes that are not UTF-8 as replacement
// characters.
std::string Printable(const std::string& text);

// A line of a result: the name, a colon, blanks and the value.
void PrintField(const std::string& name, const std::string& value);

}  // namespace zentor_cli
