#include "conversion/json/json_check.h"

#include <cmath>

#include "errors/progress.h"
#include "errors/rapidjson.h"
#include "format/limits.h"
#include "util/json_cursor.h"
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

    // A string is handed over with what this gives: where it begins in the text.
    char* PutBegin() {
        count_ = 0;
        return const_cast<char*>(next_);
    }
    void Put(char) { ++count_; }
    void Flush() {}
    std::size_t PutEnd(char*) const { return count_; }

    void SkipWhitespace() {
        while (next_ != end_ && *next_ <= ' ' &&
               (*next_ == ' ' || *next_ == '\n' || *next_ == '\r' || *next_ == '\t')) {
            ++next_;
        }
    }

private:
    const char* start_;
    const char* next_;
    const char* end_;
    std::size_t count_ = 0;
};

}  // namespace

}  // namespace zentor

namespace rapidjson {

// The parser works on a copy of the stream while it reads a string or a number.
template <>
struct StreamTraits<zentor::TextStream> {
    enum { copyOptimization = 1 };
};

template <>
inline void SkipWhitespace(zentor::TextStream& stream) {
    stream.SkipWhitespace();
}

}  // namespace rapidjson

namespace zentor {

namespace {

// The first escape for a low surrogate that follows no high one; RapidJSON lets those pass. Every other escape is
// valid, and a quote ends the string.
const char* FindLoneSurrogate(std::string_view text) {
    constexpr std::size_t kEscape = 6;  // \uXXXX
    for (std::size_t at = 0; at < text.size() && text[at] != '"';) {
        std::uint32_t unit = 0;
        if (text[at] != '\\') {
            ++at;
        } else if (!ReadUnicodeEscape(text.substr(at), unit)) {
            at += 2;
        } else if (IsLowSurrogate(unit)) {
            return text.data() + at;
        } else {
            at += IsHighSurrogate(unit) ? 2 * kEscape : kEscape;
        }
    }
    return nullptr;
}

// Stops the parser at what RapidJSON has no objection to.
class JsonHandler : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, JsonHandler> {
public:
    JsonHandler(std::string_view text, const TextStream& stream, NumberForm form)
        : text_(text), stream_(stream), form_(form) {}

    const std::optional<std::size_t>& Fault() const { return fault_; }

    bool Default() {
        Report();
        return depth_ != 0 || Stop(text_.data() + text_.find_first_not_of(" \t\n\r"));
    }
    // Computed without full precision, and maybe infinite: near the largest number, the text decides.
    bool Double(double value) {
        constexpr double kSurelyInRange = 1e308;
        return (std::abs(value) < kSurelyInRange || IsInRange() || Stop(Here())) && Default();
    }
    bool String(const char* string, rapidjson::SizeType length, bool) {
        return CheckString({string, length}) && Default();
    }
    bool Key(const char* key, rapidjson::SizeType length, bool) { return CheckString({key, length}); }
    bool StartObject() { return Open(); }
    bool StartArray() { return Open(); }
    bool EndObject(rapidjson::SizeType) { return Close(); }
    bool EndArray(rapidjson::SizeType) { return Close(); }

private:
    void Report() {
        constexpr std::size_t kReportedAtOnce = std::size_t{1} << 20;
        if (stream_.Tell() - reported_ < kReportedAtOnce) return;
        reported_ = stream_.Tell();
        ReportProgress(reported_);
    }
    const char* Here() const { return text_.data() + stream_.Tell(); }
    std::size_t OffsetOf(const char* at) const { return static_cast<std::size_t>(at - text_.data()); }
    bool Stop(const char* at) {
        fault_ = OffsetOf(at);
        return false;
    }

    // The top-level value is no group.
    bool Open() { return ++depth_ <= kGroupLimit + 1 || Stop(Here()); }
    bool Close() {
        --depth_;
        return true;
    }

    // Of the number at the stream's position: the parser reads on in its copy.
    bool IsInRange() const {
        double value = 0;
        return JsonCursor(text_, stream_.Tell()).TakeNumber(value) == NumberStatus::kOk && IsWritable(value, form_);
    }

    // `string` is as long as it is with its escapes decoded: there is a backslash in it if there is one at all.
    bool CheckString(std::string_view string) {
        if (string.find('\\') == std::string_view::npos) return true;
        const char* const lone = FindLoneSurrogate(text_.substr(OffsetOf(string.data())));
        return lone == nullptr || Stop(lone);
    }

    std::string_view text_;
    const TextStream& stream_;
    NumberForm form_;
    std::size_t depth_ = 0;
    std::size_t reported_ = 0;
    std::optional<std::size_t> fault_;
};

}  // namespace

std::optional<std::size_t> FindJsonFault(std::string_view text, NumberForm form) {
    constexpr unsigned kFlags =
        rapidjson::kParseIterativeFlag | rapidjson::kParseInsituFlag | rapidjson::kParseValidateEncodingFlag;
    BeginStep(0, kInputChecked, text.size());
    TextStream stream(text);
    JsonHandler handler(text, stream, form);
    rapidjson::GenericReader<rapidjson::UTF8<>, rapidjson::UTF8<>, JsonMemory> reader;
    const rapidjson::ParseResult result = reader.Parse<kFlags>(stream, handler);
    if (handler.Fault()) return handler.Fault();
    if (result.IsError()) return result.Offset();
    // A null byte ends a text for RapidJSON.
    if (stream.Tell() != text.size()) return stream.Tell();
    return std::nullopt;
}

}  // namespace zentor
