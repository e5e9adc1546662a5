#include "conversion/json/json_check.h"

#include <algorithm>

#include "errors/rapidjson.h"
#include "util/group_limit.h"
#include "util/json_cursor.h"
#include "util/number_text.h"
#include "util/utf_codec.h"

namespace zentor {

namespace {

// The text for RapidJSON to parse in place: what it would write over the text is only counted.
class TextStream {
public:
    using Ch = char;

    explicit TextStream(std::string_view text) : start_(text.data()), next_(start_), end_(start_ + text.size()) {}

    char Peek() const { return next_ == end_ ? '\0' : *next_; }
    char Take() { return next_ == end_ ? '\0' : *next_++; }
    std::size_t Tell() const { return static_cast<std::size_t>(next_ - start_); }

    char* PutBegin() {
        written_ = next_;
        count_ = 0;
        return nullptr;
    }
    void Put(char) { ++count_; }
    void Flush() {}
    std::size_t PutEnd(char*) const { return count_; }

    // Where writing began.
    const char* Written() const { return written_; }
    const char* Next() const { return next_; }

private:
    const char* start_;
    const char* next_;
    const char* end_;
    const char* written_ = nullptr;
    std::size_t count_ = 0;
};

// The first escape for a low surrogate that follows no high one; RapidJSON lets those pass. Every other escape is
// valid.
const char* FindLoneSurrogate(std::string_view string) {
    for (std::size_t at = string.find('\\'); at != std::string_view::npos; at = string.find('\\', at)) {
        std::uint32_t unit = 0;
        if (!ReadUnicodeEscape(string.substr(at), unit)) {
            at += 2;
        } else if (IsLowSurrogate(unit)) {
            return string.data() + at;
        } else {
            at += IsHighSurrogate(unit) ? 12 : 6;
        }
    }
    return nullptr;
}

// Stops the parser at what RapidJSON has no objection to.
class JsonHandler : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, JsonHandler> {
public:
    JsonHandler(std::string_view text, const TextStream& stream) : text_(text), stream_(stream) {}

    const std::optional<std::size_t>& Fault() const { return fault_; }

    bool Default() { return depth_ != 0 || Stop(text_.data() + text_.find_first_not_of(" \t\n\r")); }
    bool RawNumber(const char*, rapidjson::SizeType length, bool) {
        const char* const number = stream_.Next() - length;
        return (IsPlain({number, length}) || IsInRange({number, length}) || Stop(number)) && Default();
    }
    bool String(const char*, rapidjson::SizeType length, bool) { return CheckString(length) && Default(); }
    bool Key(const char*, rapidjson::SizeType length, bool) { return CheckString(length); }
    bool StartObject() { return Open(); }
    bool StartArray() { return Open(); }
    bool EndObject(rapidjson::SizeType) { return Close(); }
    bool EndArray(rapidjson::SizeType) { return Close(); }

private:
    bool Stop(const char* at) {
        fault_ = static_cast<std::size_t>(at - text_.data());
        return false;
    }

    // The top-level value is no group.
    bool Open() { return ++depth_ <= kGroupLimit + 1 || Stop(stream_.Next()); }
    bool Close() {
        --depth_;
        return true;
    }

    // Short, without an exponent: in the range of a double, whatever it is.
    static bool IsPlain(std::string_view number) {
        constexpr std::size_t kShort = 300;
        return number.size() < kShort && std::none_of(number.begin(), number.end(), [](char c) { return c > '9'; });
    }
    static bool IsInRange(std::string_view number) {
        double value = 0;
        return JsonCursor(number).TakeNumber(value) == NumberStatus::kOk && IsWritable(value);
    }

    // `length` is what is left when escapes are decoded.
    bool CheckString(std::size_t length) {
        const char* const end = stream_.Next() - 1;
        const std::string_view string(stream_.Written(), static_cast<std::size_t>(end - stream_.Written()));
        if (string.size() == length) return true;
        const char* const lone = FindLoneSurrogate(string);
        return lone == nullptr || Stop(lone);
    }

    std::string_view text_;
    const TextStream& stream_;
    std::size_t depth_ = 0;
    std::optional<std::size_t> fault_;
};

}  // namespace

std::optional<std::size_t> FindJsonFault(std::string_view text) {
    constexpr unsigned kFlags = rapidjson::kParseIterativeFlag | rapidjson::kParseInsituFlag |
                                rapidjson::kParseValidateEncodingFlag | rapidjson::kParseNumbersAsStringsFlag;
    TextStream stream(text);
    JsonHandler handler(text, stream);
    rapidjson::GenericReader<rapidjson::UTF8<>, rapidjson::UTF8<>, JsonMemory> reader;
    const rapidjson::ParseResult result = reader.Parse<kFlags>(stream, handler);
    if (handler.Fault()) return handler.Fault();
    if (result.IsError()) return result.Offset();
    // A null byte ends a text for RapidJSON.
    if (stream.Tell() != text.size()) return stream.Tell();
    return std::nullopt;
}

}  // namespace zentor
