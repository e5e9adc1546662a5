// The one buffer through which all text of a document goes to its file.
#pragma once

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

#include "format/content_form.h"
#include "util/fixed_text.h"
#include "util/number_text.h"
#include "util/short_copy.h"
#include "writer/document_file.h"

namespace zentor {

// A run of short text, written without looking at the room for each part of it.
class TextRun {
public:
    static constexpr std::size_t kMost = 4096;

    TextRun(char* at, NumberForm numbers) : at_(at), numbers_(numbers) {}

    // Copied with a length that the compiler knows.
    template <std::size_t N>
    void Put(const char (&literal)[N]) {
        std::memcpy(at_, literal, N - 1);
        at_ += N - 1;
    }
    template <std::size_t N>
    void Put(const FixedText<N>& text) {
        Put(text.bytes);
    }
    void Put(char c) { *at_++ = c; }
    void PutBoolean(bool value) {
        if (value) {
            Put("true");
        } else {
            Put("false");
        }
    }
    void Put(std::string_view text) { at_ = CopyShort(at_, text); }
    // Copies the whole room of the text, which is one move, and counts its length.
    void Put(const NumberText& number) {
        std::memcpy(at_, number.bytes, NumberText::kRoom);
        at_ += number.length;
    }
    void PutCount(std::uint64_t count) {
        if (count < 10) {  // nearly always
            Put(static_cast<char>('0' + count));
        } else {
            Put(FormatNumber(static_cast<double>(count)));
        }
    }

    // A number as the document has it.
    NumberText Format(double value) const { return FormatNumber(value, numbers_); }

    // For text that is put by others: where it goes, and where it ends then.
    char* end() const { return at_; }
    void MoveTo(char* end) { at_ = end; }

private:
    char* at_;
    NumberForm numbers_;
};

// Collects text and passes it on in pieces of one size, so that writes begin on page boundaries, and so small that they
// are still in the processor's cache on the way to the file.
class TextBuffer {
public:
    static constexpr std::size_t kPiece = 0x10000;

    TextBuffer(DocumentFile& file, const ContentForm& form)
        : file_(file), form_(form), bytes_(new char[kPiece + TextRun::kMost]) {}

    const ContentForm& form() const { return form_; }

    // Appends what `fill` puts into the run: at most TextRun::kMost bytes.
    template <class Fill>
    void AppendRun(Fill&& fill) {
        char* const start = bytes_.get() + used_;
        TextRun run(start, form_.numbers);
        fill(run);
        Advance(static_cast<std::size_t>(run.end() - start));
    }

    void Append(std::string_view text) {
        while (text.size() > TextRun::kMost) {
            const std::size_t part = std::min(text.size(), kPiece - used_);
            std::memcpy(bytes_.get() + used_, text.data(), part);
            Advance(part);
            text.remove_prefix(part);
        }
        // A call: where the compiler knows a bound, it would expand memcpy to a string instruction, which starts
        // slowly.
        std::memmove(bytes_.get() + used_, text.data(), text.size());
        Advance(text.size());
    }

    void Append(char c) {
        AppendRun([c](TextRun& run) { run.Put(c); });
    }

    void AppendNumber(double value) {
        AppendRun([value](TextRun& run) { run.Put(run.Format(value)); });
    }

    // Between double quotes, in the document's form of texts.
    void AppendQuoted(std::string_view text, Brackets brackets = Brackets::kPlain) {
        Append('"');
        Append(EscapeText(text, form_.texts, brackets, escaped_));
        Append('"');
    }

    // How much has been appended, cut off or not.
    std::uint64_t Position() const { return written_ + used_; }

    // Writes what is left. Further text begins a new piece.
    void Flush() {
        if (used_ != 0) file_.Write(bytes_.get(), used_);
        written_ += used_;
        used_ = 0;
    }

private:
    // Less than a piece is held between calls, so that a run always fits.
    void Advance(std::size_t count) {
        used_ += count;
        if (used_ >= kPiece) WritePiece();
    }

    void WritePiece() {
        file_.Write(bytes_.get(), kPiece);
        written_ += kPiece;
        used_ -= kPiece;
        std::memmove(bytes_.get(), bytes_.get() + kPiece, used_);
    }

    DocumentFile& file_;
    ContentForm form_;
    std::string escaped_;  // the text that is being appended, where it is another one
    std::unique_ptr<char[]> bytes_;
    std::size_t used_ = 0;
    std::uint64_t written_ = 0;
};

}  // namespace zentor
