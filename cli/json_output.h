// JSON on standard output.
#pragma once

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace zentor_cli {

// Writes one JSON text and a line end. What has been written goes out in pieces, so that a large result takes no
// memory.
class JsonOutput {
public:
    JsonOutput() : writer_(buffer_) {}
    JsonOutput(const JsonOutput&) = delete;
    JsonOutput& operator=(const JsonOutput&) = delete;

    void BeginObject() { writer_.StartObject(); }
    void EndObject();
    void BeginArray() { writer_.StartArray(); }
    void EndArray();
    void Key(const char* key) { writer_.Key(key); }

    // Bytes that are not UTF-8 become replacement characters.
    void Value(std::string_view text);
    void Value(const std::string& text) { Value(std::string_view(text)); }
    void Value(const char* text) { Value(std::string_view(text)); }
    void Value(bool value) { writer_.Bool(value); }
    void Value(double value);  // the shortest text that reads back as the same number
    void Value(std::int64_t value) { writer_.Int64(value); }
    void Value(std::uint64_t value) { writer_.Uint64(value); }
    void Value(std::uint32_t value) { writer_.Uint(value); }

    template <class T>
    void Member(const char* key, const T& value) {
        Key(key);
        Value(value);
    }

    // Writes out what is left.
    void Finish();

private:
    void WriteOut();

    rapidjson::StringBuffer buffer_;
    rapidjson::Writer<rapidjson::StringBuffer> writer_;
};

}  // namespace zentor_cli
