// JSON on standard output.
#pragma once

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <cstdio>
#include <string>

#include "util/utf_codec.h"

namespace zentor_cli {

using JsonWriter = rapidjson::Writer<rapidjson::StringBuffer>;

// A JSON string; bytes that are not UTF-8 become replacement characters.
inline void WriteText(JsonWriter& writer, const std::string& text) {
    const std::string valid = zentor::Utf16ToUtf8(zentor::Utf8ToUtf16(text));
    writer.String(valid.data(), static_cast<rapidjson::SizeType>(valid.size()));
}

inline void WriteMember(JsonWriter& writer, const char* key, const std::string& text) {
    writer.Key(key);
    WriteText(writer, text);
}

inline void PrintLine(const rapidjson::StringBuffer& json) { std::puts(json.GetString()); }

}  // namespace zentor_cli
