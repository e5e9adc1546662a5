// The text of a capture, read piece by piece: words and where they stand.
//
// A capture can be many times as large as what may be in memory, so it is not mapped but goes through one buffer.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "errors/notices.h"
#include "files/file_io.h"

namespace zentor {

// Line feed, carriage return, blank and what else a C program takes for white space.
constexpr bool IsBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
constexpr bool IsLineEnd(char c) { return c == '\n' || c == '\r'; }

class CaptureInput {
public:
    // A plug-in exception with ZT_CAPTURE_OPEN when the file cannot be opened.
    explicit CaptureInput(const std::string& path);
    CaptureInput(const CaptureInput&) = delete;
    CaptureInput& operator=(const CaptureInput&) = delete;

    // So many bytes can be looked at from the current position on, unless the text ends before. No word or name is
    // longer.
    static constexpr std::size_t kLookAhead = 0x10000;

    // What is left of the text, at least kLookAhead bytes if there are as many. Borrowed until the next call of any
    // function. Reads on where needed: codes of File_IO.
    std::string_view Rest() {
        if (static_cast<std::size_t>(end_ - next_) < kLookAhead && !atEnd_) Refill();
        return {next_, static_cast<std::size_t>(end_ - next_)};
    }
    // Goes on by so many bytes of what Rest gave.
    void Advance(std::size_t count) { next_ += count; }

    // Goes past white space; true when an end of line was among it, or the text is at its end.
    bool SkipBlanks() {
        if (end_ - next_ < 2 || next_[0] != ' ' || IsBlank(next_[1])) return SkipAllBlanks();
        ++next_;  // one blank is what there is nearly always
        afterReturn_ = false;
        return false;
    }
    // The next word, up to white space or a brace; a brace is a word by itself. Empty at the end of the text.
    std::string_view PeekWord();
    // Takes the rest of the line, or of the next one that is not blank, up to a brace that opens a body: what is there
    // without the blanks around it. Empty where a brace comes first. What stands behind more blanks than can be looked
    // at is no part of it.
    std::string TakeName();

    InputPlace Here() const { return {offset_ + (next_ - bytes_.get()), line_}; }
    // Code ZT_CONVERSION with a place as details.
    [[noreturn]] void Refuse() const { Refuse(Here()); }
    [[noreturn]] static void Refuse(const InputPlace& place);

private:
    bool SkipAllBlanks();
    void Refill();

    FileCloser file_;
    std::unique_ptr<char[]> bytes_;
    const char* next_;
    const char* end_;
    std::int64_t offset_ = 0;  // of the buffer, in the file
    std::int64_t line_ = 1;
    bool afterReturn_ = false;  // the last byte gone past was a carriage return
    bool atEnd_ = false;
};

// Whether two words are the same in any case of ASCII letters; `lower` is in lower case.
bool IsWord(std::string_view word, std::string_view lower);

}  // namespace zentor
