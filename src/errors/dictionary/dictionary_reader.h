// The stored forms of message dictionaries, read line by line.
//
// A line holds one entry: a double-quoted string of key path, "=" and text, in which a double quote stands as a
// backslash and a quote. Lines that are not so are passed over: a damaged dictionary loses what is damaged.
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace lexkit_private {

struct DictionaryEntry {
    std::string key;      // up to the first "=", with its prefix
    std::u16string text;  // after it
};

class DictionaryReader {
public:
    virtual ~DictionaryReader() = default;
    // The next entry; false after the last one.
    bool Next(DictionaryEntry& entry);

protected:
    DictionaryReader() = default;

private:
    // The next code unit; false at the end.
    virtual bool ReadUnit(char16_t& unit) = 0;
    bool ReadLine(std::u16string& line);

    bool isAfterReturn_ = false;
};

// UTF-16 in little-endian order, after its byte-order mark.
class UnicodeReader : public DictionaryReader {
public:
    explicit UnicodeReader(std::string_view bytes) : bytes_(bytes) {}

private:
    bool ReadUnit(char16_t& unit) override;
    virtual char16_t Decode(unsigned char first, unsigned char second) const;

    std::string_view bytes_;
};

// The other order.
class ByteSwapUnicodeReader final : public UnicodeReader {
public:
    using UnicodeReader::UnicodeReader;

private:
    char16_t Decode(unsigned char first, unsigned char second) const override;
};

// Narrow text: UTF-8.
class MultibyteReader final : public DictionaryReader {
public:
    explicit MultibyteReader(std::string_view bytes);

private:
    bool ReadUnit(char16_t& unit) override;

    std::u16string units_;
    std::size_t next_ = 0;
};

// The reader for a form, told by its first bytes; null for the binary form, which is not read. `bytes` must outlive it.
std::unique_ptr<DictionaryReader> MakeDictionaryReader(std::string_view bytes);

// The bytes of a dictionary that is stored with a byte 0D in front of every byte 0A, without these; others as they are.
std::string WithoutStrayBytes(std::string_view bytes);

}  // namespace lexkit_private
