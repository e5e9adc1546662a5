// Reads one JSON value of a document into memory.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "util/json_cursor.h"
#include "reader/json_value.h"

namespace zentor {

// How deep objects and arrays may stand in each other. Groups have a limit of their own, which a document reaches
// first.
inline constexpr std::size_t kNestingLimit = 400;
inline constexpr const char* kNestingLimitText = "100";  // the limit of groups, which is the one that messages name

// Drives RapidJSON's document builder, without recursion. Texts without escapes stay in the document's bytes.
class ValueReader {
public:
    // Reads the value at the cursor, which belongs to the top-level property `property`. Codes 32 and 43, with the byte
    // offset; 34.
    static JsonDocument Read(JsonCursor& cursor, std::string_view property);

    bool operator()(JsonDocument& builder);  // for JsonDocument::Populate

private:
    struct Level {
        bool isObject;
        JsonSize count;
        std::string_view key;  // of an object: the member that is being read
    };

    ValueReader(JsonCursor& cursor, std::string_view property) : cursor_(cursor), property_(property) {}

    bool BeginValue(JsonDocument& builder);
    bool Open(JsonDocument& builder, bool isObject);
    bool EndValues(JsonDocument& builder);
    void Close(JsonDocument& builder);
    void ReadKey(JsonDocument& builder);
    void ReadString(JsonDocument& builder);
    void ReadNumber(JsonDocument& builder);
    void ReadWord(JsonDocument& builder);
    std::string PropertyName() const;

    JsonCursor& cursor_;
    std::string_view property_;
    std::vector<Level> levels_;
};

// The failures of a number that stands at `offset`: codes 32 and 43.
[[noreturn]] void RaiseNumberFailure(NumberStatus status, std::size_t offset, const std::string& property);

}  // namespace zentor
