// What the peers share that make zentor's documents with RapidJSON's Writer: reading the recording into memory, the
// document around the outline, and the members of nodes. It is the straightforward way, neither tuned nor slowed down.
#ifndef ZENTOR_BENCH_PEER_DOCUMENT_H
#define ZENTOR_BENCH_PEER_DOCUMENT_H

#include <rapidjson/filewritestream.h>
#include <rapidjson/writer.h>

#include <array>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "arguments.h"

namespace bench {

using Writer = rapidjson::Writer<rapidjson::FileWriteStream>;

inline std::string ReadFile(const char* path) {
    std::FILE* const file = std::fopen(path, "rb");
    if (file == nullptr || std::fseek(file, 0, SEEK_END) != 0) Fail(path);
    const long size = std::ftell(file);
    if (size < 0 || std::fseek(file, 0, SEEK_SET) != 0) Fail(path);
    std::string text(static_cast<std::size_t>(size), '\0');
    if (std::fread(text.data(), 1, text.size(), file) != text.size()) Fail(path);
    std::fclose(file);
    return text;
}

inline void WriteString(Writer& writer, std::string_view text) {
    writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
}

inline void WriteNames(Writer& writer, const char* objectType, std::string_view matchName,
                       std::string_view displayName) {
    writer.Key("objectType");
    writer.String(objectType);
    writer.Key("matchName");
    WriteString(writer, matchName);
    writer.Key("displayName");
    WriteString(writer, displayName);
}

inline void WriteNumber(Writer& writer, double value) {
    std::array<char, 32> buffer;
    // Without trailing zeros and without a trailing point: the general notation leaves both out.
    char* const end =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::general, 16).ptr;
    const std::string_view text(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
    const auto writeText = [&] { writer.RawValue(text.data(), text.size(), rapidjson::kNumberType); };
    const auto writeRange = [&](const char* name) {
        writer.Key(name);
        writer.StartObject();
        writer.Key("min");
        writeText();
        writer.Key("max");
        writeText();
        writer.EndObject();
    };
    const bool isSigned = text.starts_with('-');
    const std::size_t point = text.find('.');
    const std::size_t integerEnd = point == std::string_view::npos ? text.size() : point;

    writer.Key("dataType");
    writer.StartObject();
    writer.Key("type");
    writer.String("number");
    writer.Key("numberStringProperties");
    writer.StartObject();
    writer.Key("pattern");
    writer.StartObject();
    writer.Key("isSigned");
    writer.Bool(isSigned);
    writer.Key("digitsDecimal");
    writer.Uint64(point == std::string_view::npos ? 0 : text.size() - point - 1);
    writer.Key("digitsInteger");
    writer.Uint64(integerEnd - (isSigned ? 1 : 0));
    writer.EndObject();
    writer.Key("range");
    writer.StartObject();
    writeRange("occurring");
    writeRange("legal");
    writer.EndObject();
    writer.EndObject();
    writer.EndObject();
    writer.Key("value");
    writeText();
}

inline void WriteText(Writer& writer, std::string_view text) {
    writer.Key("dataType");
    writer.StartObject();
    writer.Key("type");
    writer.String("string");
    writer.Key("paddedStringProperties");
    writer.StartObject();
    writer.Key("maxDigitsInStrLength");
    writer.Uint(0);
    writer.Key("maxLen");
    writer.Uint(0);
    writer.Key("eventMarkerB");
    writer.Bool(false);
    writer.EndObject();
    writer.EndObject();
    writer.Key("value");
    WriteString(writer, text);
}

// Writes a document whose outline are the nodes that `writeNodes` writes to the Writer it is given.
template <typename WriteNodes>
void WriteDocument(const char* path, const char* creator, const WriteNodes& writeNodes) {
    std::FILE* const file = std::fopen(path, "wb");
    if (file == nullptr) Fail(path);
    std::vector<char> buffer(1 << 20);
    rapidjson::FileWriteStream output(file, buffer.data(), buffer.size());
    Writer writer(output);
    writer.StartObject();
    writer.Key("version");
    writer.String("vkjson2.0.0");
    writer.Key("dynamicSamplesPresentB");
    writer.Bool(false);
    writer.Key("creator");
    writer.String(creator);
    writer.Key("dataOutline");
    writer.StartArray();
    writeNodes(writer);
    writer.EndArray();
    writer.EndObject();
    output.Flush();
    // The stream drops the results of its writes; the file remembers a failure.
    if (std::ferror(file) != 0 || std::fclose(file) != 0) Fail(path);
}

}  // namespace bench

#endif
