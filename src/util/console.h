// What a command-line program needs of the platform.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zentor::os {

// The program's arguments without its name, as UTF-8. Throws std::bad_alloc.
std::vector<std::string> Arguments(int argc, char** argv);

// Whether standard error is a terminal.
bool IsErrorTerminal();

// Write to a standard stream. What goes to a console of a system with wide text is UTF-8 and shown as such; a character
// may come in pieces. False when the stream cannot be written.
bool WriteOutput(std::string_view bytes);
bool WriteError(std::string_view bytes);

// Makes writing to a pipe that nobody reads any more fail, rather than end the program before it has cleaned up.
void IgnoreBrokenPipes();

// From now on the signals and console events that end a program only set a sign, so that it can clean up; those that
// the process was started to ignore stay ignored. A second one ends it at once.
void WatchForStop();
bool IsStopWanted();
// Ends the program as the signal would have.
[[noreturn]] void EndByStop();

// Lets bytes go to standard output as they are.
void SetBinaryOutput();

// While it lives, what anybody writes to the process's standard output goes nowhere; the program itself writes nothing
// in that time. Without a descriptor to spare, or without standard output, it changes nothing.
class OutputAside {
public:
    OutputAside();
    ~OutputAside();
    OutputAside(const OutputAside&) = delete;
    OutputAside& operator=(const OutputAside&) = delete;

private:
    int kept_ = -1;  // a descriptor of the standard output
};

}  // namespace zentor::os
