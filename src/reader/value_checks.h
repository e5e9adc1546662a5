// Checks of values against the schema. A failure names the place of the value in words and as a byte offset.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "errors/error_table.h"
#include "reader/json_value.h"

namespace zentor {

// Counts, digits and lengths are whole and from 0 to 2^53.
bool IsCount(double number);
inline constexpr const char* kExpectedCount = "a whole number from 0 to 9007199254740992";

enum class JsonType { kObject, kArray, kString, kNumber, kBoolean };

// Walks along with the checks of one top-level value: it knows the steps from there down to the value being checked.
// The offset of a value is not kept but looked up when a check fails, by reading the bytes again along the steps.
class ValueChecks {
public:
    // `offset`: where the value of the top-level property `property` begins in the document's bytes.
    ValueChecks(std::string_view bytes, std::size_t offset, std::string_view property)
        : bytes_(bytes), offset_(offset), property_(property) {}

    // A step down, undone at the end of its scope.
    class [[nodiscard]] Step {
    public:
        explicit Step(ValueChecks& checks) : checks_(checks) {}
        ~Step() { checks_.steps_.pop_back(); }
        Step(const Step&) = delete;
        Step& operator=(const Step&) = delete;

    private:
        ValueChecks& checks_;
    };
    Step Into(std::string_view key) {
        steps_.push_back({key, 0});
        return Step(*this);
    }
    Step Into(std::size_t index) {
        steps_.push_back({{}, index});
        return Step(*this);
    }

    // A member of `object`, which is the value at this place. Code ZT_MISSING_PROPERTY when it is missing.
    const JsonValue& Require(const JsonValue& object, std::string_view key) const;
    // The same with a type: ZT_PROPERTY_TYPE too.
    const JsonValue& Require(const JsonValue& object, std::string_view key, JsonType type) const;
    // A member that may be missing; null then. Code ZT_PROPERTY_TYPE.
    const JsonValue* Allow(const JsonValue& object, std::string_view key, JsonType type) const;
    // A string that is one of `allowed`, which `expected` names. Codes ZT_MISSING_PROPERTY, ZT_PROPERTY_TYPE,
    // ZT_PROPERTY_VALUE.
    std::string_view RequireOneOf(const JsonValue& object, std::string_view key,
                                  std::initializer_list<std::string_view> allowed, const char* expected) const;
    // A count. Codes ZT_MISSING_PROPERTY, ZT_PROPERTY_TYPE, ZT_PROPERTY_VALUE.
    void RequireCount(const JsonValue& object, std::string_view key) const;
    void AllowCount(const JsonValue& object, std::string_view key) const;

    // The value at this place, which is part of the property `name`. Code ZT_PROPERTY_TYPE.
    void RequireType(const JsonValue& value, std::string_view name, JsonType type) const;
    // Code ZT_EMPTY_ARRAY.
    void RequireElements(const JsonValue& array, std::string_view key) const;

    // The failure of a member of the object at this place, or of the value itself when `key` is empty; `name` is what
    // the message calls it.
    [[noreturn]] void RaiseAt(const ErrorEntry& entry, std::string_view name, std::string_view key) const;
    // Code ZT_PROPERTY_VALUE, with what was expected.
    [[noreturn]] void RaiseValueAt(std::string_view name, std::string_view key, std::string_view expected) const;
    // Code ZT_PROPERTY_TYPE.
    [[noreturn]] void RaiseTypeAt(std::string_view name, std::string_view key, JsonType expected) const;
    // The byte offset of a member of the object at this place, or of the value at this place when `key` is empty.
    std::int64_t OffsetOf(std::string_view key = {}) const;
    // The place in words, e.g. dataOutline[0]/["dataType"].
    std::string Place() const;

private:
    struct StepDown {
        std::string_view key;  // null: an element
        std::size_t index;
    };

    void CheckCount(const JsonValue& value, std::string_view key) const;
    void CheckType(const JsonValue& value, std::string_view name, std::string_view key, JsonType type) const;

    std::string_view bytes_;
    std::size_t offset_;
    std::string_view property_;
    std::vector<StepDown> steps_;
};

}  // namespace zentor
