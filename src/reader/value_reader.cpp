#include "reader/value_reader.h"

#include <limits>

#include "errors/raise.h"

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

}  // namespace

JsonDocument ValueReader::Read(JsonCursor& cursor, std::string_view property) {
    JsonDocument document;
    ValueReader reader(cursor, property);
    document.Populate(reader);
    return document;
}

bool ValueReader::operator()(JsonDocument& builder) {
    for (;;) {
        cursor_.SkipWhiteSpace();
        if (BeginValue(builder)) continue;
        if (EndValues(builder)) return true;
    }
}

// Reads a scalar, or opens an object or an array; true when another value begins right after.
bool ValueReader::BeginValue(JsonDocument& builder) {
    if (cursor_.AtEnd()) Raise({kInvalidJson, Detail(cursor_.Offset())}, Quoted(PropertyName()));
    switch (cursor_.Peek()) {
        case '{':
            return Open(builder, true);
        case '[':
            return Open(builder, false);
        case '"':
            ReadString(builder);
            return false;
        case '-':
        case '0':
        case '1':
        case '2':
        case '3':
        case '4':
        case '5':
        case '6':
        case '7':
        case '8':
        case '9':
            ReadNumber(builder);
            return false;
        default:
            ReadWord(builder);
            return false;
    }
}

bool ValueReader::Open(JsonDocument& builder, bool isObject) {
    if (levels_.size() == kNestingLimit) Raise({kTooDeepNesting, Detail(cursor_.Offset())}, kNestingLimitText);
    cursor_.Skip(isObject ? '{' : '[');
    levels_.push_back({isObject, 0, {}});
    if (isObject) {
        builder.StartObject();
    } else {
        builder.StartArray();
    }
    cursor_.SkipWhiteSpace();
    if (cursor_.Skip(isObject ? '}' : ']')) {
        Close(builder);
        return false;
    }
    if (isObject) ReadKey(builder);
    return true;
}

// What follows a value: the ends of the containers that it is the last of. True when the whole value has been read.
bool ValueReader::EndValues(JsonDocument& builder) {
    while (!levels_.empty()) {
        Level& level = levels_.back();
        level.count = CheckedSize(std::size_t{level.count} + 1);
        cursor_.SkipWhiteSpace();
        if (cursor_.Skip(',')) {
            if (level.isObject) ReadKey(builder);
            return false;
        }
        if (!cursor_.Skip(level.isObject ? '}' : ']')) {
            Raise({kInvalidPropertyMissingComma, Detail(cursor_.Offset())}, PropertyName());
        }
        Close(builder);
    }
    return true;
}

void ValueReader::Close(JsonDocument& builder) {
    const Level& level = levels_.back();
    if (level.isObject) {
        builder.EndObject(level.count);
    } else {
        builder.EndArray(level.count);
    }
    levels_.pop_back();
}

void ValueReader::ReadKey(JsonDocument& builder) {
    cursor_.SkipWhiteSpace();
    RawString key;
    if (!cursor_.TakeString(key)) Raise({kInvalidKeyMissingQuotes, Detail(cursor_.Offset())});
    levels_.back().key = key.text;
    cursor_.SkipWhiteSpace();
    if (!cursor_.Skip(':')) Raise({kInvalidPropertyMissingColon, Detail(cursor_.Offset())}, PropertyName());
    PutText(key, [&](const char* text, JsonSize length, bool copy) { builder.Key(text, length, copy); });
}

void ValueReader::ReadString(JsonDocument& builder) {
    RawString string;
    if (!cursor_.TakeString(string)) {
        Raise({kInvalidPropertyValueMissingQuotes, Detail(cursor_.Offset())}, PropertyName());
    }
    PutText(string, [&](const char* text, JsonSize length, bool copy) { builder.String(text, length, copy); });
}

void ValueReader::ReadNumber(JsonDocument& builder) {
    double value = 0;
    const NumberStatus status = cursor_.TakeNumber(value);
    if (status != NumberStatus::kOk) RaiseNumberFailure(status, cursor_.Offset(), PropertyName());
    builder.Double(value);
}

void ValueReader::ReadWord(JsonDocument& builder) {
    if (cursor_.SkipWord("true")) {
        builder.Bool(true);
    } else if (cursor_.SkipWord("false")) {
        builder.Bool(false);
    } else {
        Raise({kInvalidPropertyType, Detail(cursor_.Offset())}, PropertyName(), Quoted("JSON Boolean"));
    }
}

// The names of the properties from the top level down, joined by "::".
std::string ValueReader::PropertyName() const {
    std::string name(property_);
    for (const Level& level : levels_) {
        if (!level.isObject || level.key.data() == nullptr) continue;
        name += "::";
        name += level.key.substr(0, kLongestKeyShown);
    }
    return Excerpt(name);
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
