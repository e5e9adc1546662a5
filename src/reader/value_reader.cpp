#include "reader/value_reader.h"

#include <algorithm>
#include <limits>

#include "errors/raise.h"
#include "format/limits.h"

namespace zentor {

namespace {

std::int64_t Detail(std::size_t offset) { return static_cast<std::int64_t>(offset); }

// RapidJSON counts in 32 bits.
JsonSize CheckedSize(std::size_t size) {
    if (size >= std::numeric_limits<JsonSize>::max()) Raise(kMemoryNotAvailable);
    return static_cast<JsonSize>(size);
}

constexpr std::size_t kLongestKeyShown = 2048;  // more than a message takes

template <class Put>
void PutText(const RawString& string, Put&& put) {
    if (string.hasBackslash) {
        const std::string decoded = DecodeEscapes(string.text);
        put(decoded.data(), CheckedSize(decoded.size()), true);
    } else {
        put(string.text.data(), CheckedSize(string.text.size()), false);
    }
}

// Drives a handler as RapidJSON's reader does, without recursion.
template <class Handler>
class ValueReader {
public:
    ValueReader(JsonCursor& cursor, std::string_view property) : cursor_(cursor), property_(property) {}

    bool operator()(Handler& handler);

private:
    struct Level {
        bool isObject;
        JsonSize count;
        std::string_view key;  // of an object: the member that is being read
    };

    bool BeginValue(Handler& handler);
    bool Open(Handler& handler, bool isObject);
    bool EndValues(Handler& handler);
    void Close(Handler& handler);
    void ReadKey(Handler& handler);
    void ReadString(Handler& handler);
    void ReadNumber(Handler& handler);
    void ReadWord(Handler& handler);
    std::string PropertyName() const;
    // The text has ended within a value.
    [[noreturn]] void RaiseEnd() const {
        Raise({kInvalidJson, Detail(cursor_.Bytes().size())}, Quoted(PropertyName()));
    }

    JsonCursor& cursor_;
    std::string_view property_;
    std::vector<Level> levels_;
};

template <class Handler>
bool ValueReader<Handler>::operator()(Handler& handler) {
    for (;;) {
        cursor_.SkipWhiteSpace();
        if (BeginValue(handler)) continue;
        if (EndValues(handler)) return true;
    }
}

// Reads a scalar, or opens an object or an array; true when another value begins right after.
template <class Handler>
bool ValueReader<Handler>::BeginValue(Handler& handler) {
    if (cursor_.AtEnd()) RaiseEnd();
    switch (cursor_.Peek()) {
        case '{':
            return Open(handler, true);
        case '[':
            return Open(handler, false);
        case '"':
            ReadString(handler);
            return false;
        case 't':
        case 'f':
            ReadWord(handler);
            return false;
        default:
            ReadNumber(handler);
            return false;
    }
}

template <class Handler>
bool ValueReader<Handler>::Open(Handler& handler, bool isObject) {
    if (levels_.size() == kNestingLimit)
        Raise({kTooDeepNesting, Detail(cursor_.Offset())}, std::to_string(kGroupLimit));
    cursor_.Skip(isObject ? '{' : '[');
    levels_.push_back({isObject, 0, {}});
    if (isObject) {
        handler.StartObject();
    } else {
        handler.StartArray();
    }
    cursor_.SkipWhiteSpace();
    if (cursor_.Skip(isObject ? '}' : ']')) {
        Close(handler);
        return false;
    }
    if (isObject) ReadKey(handler);
    return true;
}

// What follows a value: the ends of the containers that it is the last of. True when the whole value has been read.
template <class Handler>
bool ValueReader<Handler>::EndValues(Handler& handler) {
    while (!levels_.empty()) {
        Level& level = levels_.back();
        level.count = CheckedSize(std::size_t{level.count} + 1);
        cursor_.SkipWhiteSpace();
        if (cursor_.Skip(',')) {
            if (level.isObject) ReadKey(handler);
            return false;
        }
        if (!cursor_.Skip(level.isObject ? '}' : ']')) {
            Raise({kInvalidPropertyMissingComma, Detail(cursor_.Offset())}, PropertyName());
        }
        Close(handler);
    }
    return true;
}

template <class Handler>
void ValueReader<Handler>::Close(Handler& handler) {
    const Level& level = levels_.back();
    if (level.isObject) {
        handler.EndObject(level.count);
    } else {
        handler.EndArray(level.count);
    }
    levels_.pop_back();
}

template <class Handler>
void ValueReader<Handler>::ReadKey(Handler& handler) {
    cursor_.SkipWhiteSpace();
    RawString key;
    if (!cursor_.TakeString(key)) Raise({kInvalidKeyMissingQuotes, Detail(cursor_.Offset())});
    levels_.back().key = key.text;
    cursor_.SkipWhiteSpace();
    if (!cursor_.Skip(':')) Raise({kInvalidPropertyMissingColon, Detail(cursor_.Offset())}, PropertyName());
    PutText(key, [&](const char* text, JsonSize length, bool copy) { handler.Key(text, length, copy); });
}

template <class Handler>
void ValueReader<Handler>::ReadString(Handler& handler) {
    RawString string;
    if (!cursor_.TakeString(string)) {
        Raise({kInvalidPropertyValueMissingQuotes, Detail(cursor_.Offset())}, PropertyName());
    }
    PutText(string, [&](const char* text, JsonSize length, bool copy) { handler.String(text, length, copy); });
}

template <class Handler>
void ValueReader<Handler>::ReadNumber(Handler& handler) {
    double value = 0;
    const NumberStatus status = cursor_.TakeNumber(value);
    if (status != NumberStatus::kOk) {
        if (cursor_.AtEnd()) RaiseEnd();
        RaiseNumberFailure(status, cursor_.Offset(), PropertyName());
    }
    handler.Double(value);
}

template <class Handler>
void ValueReader<Handler>::ReadWord(Handler& handler) {
    if (cursor_.SkipWord("true")) {
        handler.Bool(true);
    } else if (cursor_.SkipWord("false")) {
        handler.Bool(false);
    } else {
        if (cursor_.IsCutWord("true") || cursor_.IsCutWord("false")) RaiseEnd();
        Raise({kInvalidPropertyType, Detail(cursor_.Offset())}, PropertyName(), Quoted("JSON Boolean"));
    }
}

// The names of the properties from the top level down, joined by "::".
template <class Handler>
std::string ValueReader<Handler>::PropertyName() const {
    std::string name(property_);
    for (const Level& level : levels_) {
        if (!level.isObject || level.key.data() == nullptr) continue;
        name += "::";
        name += level.key.substr(0, kLongestKeyShown);
    }
    return Excerpt(name);
}

// Keeps no values.
class SpanCollector {
public:
    SpanCollector(const JsonCursor& cursor, std::string_view key) : cursor_(cursor), key_(key) {}

    void StartObject() { isKey_ = false; }
    void EndObject(JsonSize) {}
    void Key(const char* text, JsonSize length, bool) { isKey_ = std::string_view(text, length) == key_; }
    void StartArray() {
        open_.push_back(isKey_ ? cursor_.Offset() - 1 : kOther);
        isKey_ = false;
    }
    void EndArray(JsonSize) {
        const std::size_t begin = open_.back();
        open_.pop_back();
        if (begin == kOther) return;
        JsonCursor after = cursor_;
        after.SkipWhiteSpace();
        if (after.Skip(',')) spans_.emplace_back(begin, cursor_.Offset());
    }
    void String(const char*, JsonSize, bool) { isKey_ = false; }
    void Double(double) { isKey_ = false; }
    void Bool(bool) { isKey_ = false; }

    ArraySpans TakeSpans() {
        std::sort(spans_.begin(), spans_.end());  // inner ones have come first
        return std::move(spans_);
    }

private:
    static constexpr std::size_t kOther = std::numeric_limits<std::size_t>::max();

    const JsonCursor& cursor_;
    std::string_view key_;
    bool isKey_ = false;  // the value that comes next is one of `key_`
    std::vector<std::size_t> open_;
    ArraySpans spans_;
};

}  // namespace

void ReadValueInto(JsonDocument& builder, JsonCursor& cursor, std::string_view property) {
    ValueReader<JsonDocument> reader(cursor, property);
    reader(builder);
}

JsonDocument ReadValue(JsonCursor& cursor, std::string_view property) {
    JsonDocument document;
    ValueReader<JsonDocument> reader(cursor, property);
    document.Populate(reader);
    return document;
}

ArraySpans CheckValue(JsonCursor& cursor, std::string_view property, std::string_view key) {
    SpanCollector collector(cursor, key);
    ValueReader<SpanCollector> reader(cursor, property);
    reader(collector);
    return collector.TakeSpans();
}

void RaiseNumberFailure(NumberStatus status, std::size_t offset, const std::string& property) {
    const std::int64_t detail = Detail(offset);
    switch (status) {
        case NumberStatus::kNoFraction:
            Raise({kMissingFractionPart, detail});
        case NumberStatus::kNoExponent:
            Raise({kMissingExponent, detail});
        case NumberStatus::kTooBig:
            Raise({kNumberTooBig, detail});
        case NumberStatus::kOverflow:
            Raise({kExponentTooBig, detail});
        default:
            Raise({kInvalidPropertyType, detail}, property, Quoted("JSON Number"));
    }
}

}  // namespace zentor
