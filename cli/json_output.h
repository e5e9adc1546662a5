// JSON for programs.
#pragma once

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace zentor_cli {

// Makes one JSON text.
class JsonText {
public:
    JsonText() : writer_(buffer_) {}
    virtual ~JsonText() = default;
    JsonText(const JsonText&) = delete;
    JsonText& operator=(const JsonText&) = delete;

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

    // What there is so far, which is taken out.
    std::string Take();

protected:
    // What there is may be taken, for a part of the text has ended.
    virtual void OnEnd(std::size_t) {}

private:
    rapidjson::StringBuffer buffer_;
    rapidjson::Writer<rapidjson::StringBuffer> writer_;
};

// Writes one JSON text and a line end to standard output. What has been written goes out in pieces, so that a large
// result takes no memory.
class JsonOutput final : public JsonText {
public:
    // Writes out what is left.
    void Finish();

private:
    void OnEnd(std::size_t size) override;
};

}  // namespace zentor_cli
