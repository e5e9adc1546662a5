// What a command-line program needs of the platform.
#pragma once

#include <string>
#include <vector>

namespace zentor::os {

// The program's arguments without its name, as UTF-8.
std::vector<std::string> Arguments(int argc, char** argv);

// Whether standard error is a terminal.
bool IsErrorTerminal();

// Writes UTF-8 to standard error; to a console of a system with wide text as such.
void WriteError(const std::string& text);

// Makes UTF-8 on standard output come out right on a console, until the process ends.
void SetUtf8Output();

// Makes writing to a pipe that nobody reads any more fail, rather than end the program before it has cleaned up.
void IgnoreBrokenPipes();

// Lets bytes go to standard output as they are.
void SetBinaryOutput();

}  // namespace zentor::os
