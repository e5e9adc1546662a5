// The text of a table: a file's bytes as UTF-8, whatever its encoding.
#pragma once

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

namespace series {

enum class Encoding : std::uint8_t { kUtf8, kUtf16Le, kUtf16Be, kWindows1252 };

const char* NameOf(Encoding encoding);

// Where rows come from.
class TextSource {
public:
    virtual ~TextSource() = default;
    // Fills the first bytes of a room; fewer than `size` only at the end, 0 after it.
    virtual std::size_t Read(char* room, std::size_t size) = 0;
    // Whether bytes of the text are bytes of the file, `FirstByte` of it on.
    virtual bool IsAsInFile() const = 0;
    virtual std::int64_t FirstByte() const = 0;
};

// By the byte-order mark, by zeros beside every Latin character, and by what UTF-8 cannot be.
// `isCut`: the head may end within a character.
Encoding DetectEncoding(std::string_view head, bool isCut);

// A file, through one buffer. Byte-order marks are passed over. A byte that is no part of UTF-8 stays as it is.
class FileSource : public TextSource {
public:
    // `path`: UTF-8. Throws ZT_CAPTURE_OPEN when it cannot be opened.
    FileSource(const std::string& path, Encoding encoding);

    std::size_t Read(char* room, std::size_t size) override;
    bool IsAsInFile() const override { return encoding_ == Encoding::kUtf8; }
    std::int64_t FirstByte() const override { return firstByte_; }

private:
    std::size_t ReadBytes(char* room, std::size_t size);
    void Decode();
    void DecodeUnit(std::uint32_t unit);

    std::filebuf file_;
    Encoding encoding_;
    std::int64_t firstByte_ = 0;
    std::vector<char> raw_;   // of encodings that are decoded
    std::string decoded_;     // and what they say
    std::size_t taken_ = 0;   // of it
    std::uint32_t high_ = 0;  // half of a surrogate pair
    int odd_ = -1;            // half of a unit
    bool isAtBeginning_ = true;
};

// A text in memory.
class MemorySource : public TextSource {
public:
    // `firstByte`: of the file, below 0 for a text that was decoded.
    MemorySource(std::string_view text, std::int64_t firstByte) : text_(text), firstByte_(firstByte) {}

    std::size_t Read(char* room, std::size_t size) override;
    bool IsAsInFile() const override { return firstByte_ >= 0; }
    std::int64_t FirstByte() const override { return firstByte_ < 0 ? 0 : firstByte_; }

private:
    std::string_view text_;
    std::int64_t firstByte_;
};

}  // namespace series
