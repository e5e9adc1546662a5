#include "reader/value_checks.h"

#include <algorithm>
#include <cmath>

#include "errors/raise.h"
#include "format/limits.h"
#include "util/json_cursor.h"

namespace zentor {

namespace {

const char* NameOf(JsonType type) {
    switch (type) {
        case JsonType::kObject:
            return "JSON Object";
        case JsonType::kArray:
            return "JSON Array";
        case JsonType::kString:
            return "JSON String";
        case JsonType::kNumber:
            return "JSON Number";
        default:
            return "JSON Boolean";
    }
}

bool IsOfType(const JsonValue& value, JsonType type) {
    switch (type) {
        case JsonType::kObject:
            return value.IsObject();
        case JsonType::kArray:
            return value.IsArray();
        case JsonType::kString:
            return value.IsString();
        case JsonType::kNumber:
            return value.IsNumber();
        default:
            return value.IsBool();
    }
}

// From the beginning of an object or array to the beginning of one of its values; the text is known to be valid.
class RawWalk {
public:
    RawWalk(std::string_view bytes, std::size_t offset) : cursor_(bytes, offset) {}

    void ToMember(std::string_view key) {
        while (EnterOrGoOn()) {
            RawString name;
            cursor_.TakeString(name);
            cursor_.SkipWhiteSpace();
            cursor_.Skip(':');
            cursor_.SkipWhiteSpace();
            if (name.Decoded() == key) return;
            cursor_.SkipValue();
        }
    }
    void ToElement(std::size_t index) {
        for (EnterOrGoOn(); index != 0; --index) {
            cursor_.SkipValue();
            EnterOrGoOn();
        }
    }
    std::size_t Offset() const { return cursor_.Offset(); }

private:
    bool EnterOrGoOn() {
        cursor_.SkipWhiteSpace();
        if (!cursor_.Skip('{') && !cursor_.Skip('[') && !cursor_.Skip(',')) return false;
        cursor_.SkipWhiteSpace();
        return !cursor_.AtEnd() && cursor_.Peek() != '}' && cursor_.Peek() != ']';
    }

    JsonCursor cursor_;
};

}  // namespace

bool IsCount(double number) {
    return number >= 0 && number <= static_cast<double>(kLargestCount) && std::trunc(number) == number;
}

const JsonValue& ValueChecks::Require(const JsonValue& object, std::string_view key) const {
    const JsonValue* const value = FindMember(object, key);
    if (value == nullptr) RaiseAt(kMissingRequiredPropertyAtPath, key, {});
    return *value;
}

const JsonValue& ValueChecks::Require(const JsonValue& object, std::string_view key, JsonType type) const {
    const JsonValue& value = Require(object, key);
    CheckType(value, key, key, type);
    return value;
}

const JsonValue* ValueChecks::Allow(const JsonValue& object, std::string_view key, JsonType type) const {
    const JsonValue* const value = FindMember(object, key);
    if (value != nullptr) CheckType(*value, key, key, type);
    return value;
}

std::string_view ValueChecks::RequireOneOf(const JsonValue& object, std::string_view key,
                                           std::initializer_list<std::string_view> allowed,
                                           const char* expected) const {
    const std::string_view text = TextOf(Require(object, key, JsonType::kString));
    if (std::find(allowed.begin(), allowed.end(), text) == allowed.end()) {
        RaiseValueAt(key, key, expected);
    }
    return text;
}

void ValueChecks::RequireCount(const JsonValue& object, std::string_view key) const {
    CheckCount(Require(object, key, JsonType::kNumber), key);
}

void ValueChecks::AllowCount(const JsonValue& object, std::string_view key) const {
    if (const JsonValue* const value = Allow(object, key, JsonType::kNumber)) CheckCount(*value, key);
}

void ValueChecks::CheckCount(const JsonValue& value, std::string_view key) const {
    if (!IsCount(value.GetDouble())) RaiseValueAt(key, key, kExpectedCount);
}

void ValueChecks::RequireType(const JsonValue& value, std::string_view name, JsonType type) const {
    CheckType(value, name, {}, type);
}

void ValueChecks::CheckType(const JsonValue& value, std::string_view name, std::string_view key, JsonType type) const {
    if (!IsOfType(value, type)) RaiseTypeAt(name, key, type);
}

void ValueChecks::RequireElements(const JsonValue& array, std::string_view key) const {
    if (array.Empty()) RaiseAt(kEmptyArrayAtPath, key, key);
}

void ValueChecks::RaiseAt(const ErrorEntry& entry, std::string_view name, std::string_view key) const {
    Raise({entry, OffsetOf(key)}, name, Quoted(Place()));
}

void ValueChecks::RaiseValueAt(std::string_view name, std::string_view key, std::string_view expected) const {
    Raise({kInvalidPropertyValueAtPath, OffsetOf(key)}, name, Quoted(Place()), expected);
}

void ValueChecks::RaiseTypeAt(std::string_view name, std::string_view key, JsonType expected) const {
    Raise({kInvalidPropertyTypeAtPath, OffsetOf(key)}, name, Quoted(NameOf(expected)), Quoted(Place()));
}

std::int64_t ValueChecks::OffsetOf(std::string_view key) const {
    RawWalk walk(bytes_, offset_);
    for (const StepDown& step : steps_) {
        if (step.key.data() == nullptr) {
            walk.ToElement(step.index);
        } else {
            walk.ToMember(step.key);
        }
    }
    if (!key.empty()) walk.ToMember(key);
    return static_cast<std::int64_t>(walk.Offset());
}

std::string ValueChecks::Place() const {
    std::string place(property_);
    for (const StepDown& step : steps_) {
        if (step.key.data() == nullptr) {
            place += '[' + std::to_string(step.index) + ']';
        } else {
            place += "/[\"" + std::string(step.key) + "\"]";
        }
    }
    return place;
}

}  // namespace zentor
