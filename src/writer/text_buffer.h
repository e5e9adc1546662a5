// The one buffer through which all text of a document goes to its file.
#pragma once

#include <cstring>
#include <memory>
#include <string_view>

#include "util/number_text.h"
#include "writer/document_file.h"

namespace zentor {

// Collects text and passes it on in pieces of at most 1 MiB.
class TextBuffer {
public:
    static constexpr std::size_t kCapacity = 0x100000;

    explicit TextBuffer(DocumentFile& file) : file_(file), bytes_(new char[kCapacity]) {}

    void Append(std::string_view text) {
        if (text.size() > kCapacity - used_) {
            AppendInPieces(text);
            return;
        }
        std::memcpy(bytes_.get() + used_, text.data(), text.size());
        used_ += text.size();
    }

    void Append(char c) {
        if (used_ == kCapacity) Flush();
        bytes_[used_++] = c;
    }

    void Append(const NumberText& number) { Append(number.view()); }
    void AppendNumber(double value) { Append(FormatNumber(value)); }
    void AppendBoolean(bool value) { Append(value ? std::string_view("true") : std::string_view("false")); }
    // Between double quotes, byte for byte: the format knows no escaping.
    void AppendQuoted(std::string_view text) {
        Append('"');
        Append(text);
        Append('"');
    }

    void Flush() {
        if (used_ != 0) file_.Write(bytes_.get(), used_);
        used_ = 0;
    }

private:
    void AppendInPieces(std::string_view text) {
        while (!text.empty()) {
            if (used_ == kCapacity) Flush();
            const std::size_t piece = std::min(text.size(), kCapacity - used_);
            std::memcpy(bytes_.get() + used_, text.data(), piece);
            used_ += piece;
            text.remove_prefix(piece);
        }
    }

    DocumentFile& file_;
    std::unique_ptr<char[]> bytes_;
    std::size_t used_ = 0;
};

}  // namespace zentor
