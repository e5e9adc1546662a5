// What a command-line program needs of the platform.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zentor::os {

// The program's arguments without its name, as UTF-8. Where the shell leaves that to programs, "*" and "?" in names of
// files are replaced by those that there are. Throws std::bad_alloc.
std::vector<std::string> Arguments(int argc, char** argv);

// Whether standard error is a terminal.
bool IsErrorTerminal();

// Whether standard output failed because nobody reads it any more.
bool IsOutputClosed();

// Write to a standard stream. What goes to a console of a system with wide text is UTF-8 and shown as such; a character
// may come in pieces. False when the stream cannot be written.
bool WriteOutput(std::string_view bytes);
bool WriteError(std::string_view bytes);
// What has been written to standard output is on its way. False when something could not be written.
bool FlushOutput();

// Makes writing to a pipe that nobody reads any more fail, rather than end the program before it has cleaned up.
void IgnoreBrokenPipes();

// From now on the signals and console events that end a program only set a sign, so that it can clean up; those that
// the process was started to ignore stay ignored. A second one ends it at once.
void WatchForStop();
bool IsStopWanted();
// Ends the program as the signal would have.
[[noreturn]] void EndByStop();
// Ends the program as one that writes to a pipe that nobody reads.
[[noreturn]] void EndByBrokenPipe();

// Reads from standard input, byte for byte; `got` is 0 at its end. False when it cannot be read.
bool ReadInput(char* buffer, std::size_t count, std::size_t& got);

// Lets bytes go to standard output as they are.
void SetBinaryOutput();

// While it lives, what others write to the process's standard output goes nowhere; WriteOutput goes where it always
// does, at once. Without a descriptor to spare, or without standard output, it changes nothing. There is one at a time.
class OutputAside {
public:
    OutputAside();
    ~OutputAside();
    OutputAside(const OutputAside&) = delete;
    OutputAside& operator=(const OutputAside&) = delete;

private:
    bool isAside_ = false;
};

}  // namespace zentor::os
