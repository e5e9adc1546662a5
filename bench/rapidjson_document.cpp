// The peer: the same document, byte for byte, made in the straightforward way with RapidJSON: the file is parsed into a
// Document, whose values are then written as nodes. It knows what the generator writes: an object or an array at the
// top, and no numbers whose text in the document has an exponent.
#include <rapidjson/document.h>

#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "measure.h"
#include "peer_document.h"

namespace {

void WriteChildren(bench::Writer& writer, const rapidjson::Value& parent, std::uint64_t& counter);

void WriteNode(bench::Writer& writer, std::string_view displayName, const rapidjson::Value& value,
               std::uint64_t& counter) {
    if (value.IsNull()) return;  // a document has nothing for it
    const bool isGroup = value.IsObject() || value.IsArray();
    writer.StartObject();
    bench::WriteNames(writer, isGroup ? "dataGroup" : "dataStatic", "matchName" + std::to_string(counter++),
                      displayName);
    if (isGroup) {
        writer.Key("children");
        writer.StartArray();
        WriteChildren(writer, value, counter);
        writer.EndArray();
    } else if (value.IsNumber()) {
        bench::WriteNumber(writer, value.GetDouble());
    } else if (value.IsString()) {
        bench::WriteText(writer, {value.GetString(), value.GetStringLength()});
    } else {
        writer.Key("dataType");
        writer.StartObject();
        writer.Key("type");
        writer.String("boolean");
        writer.EndObject();
        writer.Key("value");
        writer.Bool(value.GetBool());
    }
    writer.EndObject();
}

void WriteChildren(bench::Writer& writer, const rapidjson::Value& parent, std::uint64_t& counter) {
    if (parent.IsObject()) {
        for (const auto& member : parent.GetObject()) {
            WriteNode(writer, {member.name.GetString(), member.name.GetStringLength()}, member.value, counter);
        }
    } else {
        std::size_t index = 0;
        for (const auto& element : parent.GetArray()) {
            WriteNode(writer, std::to_string(index++), element, counter);
        }
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s INPUT.json OUT\n", argv[0]);
        return EXIT_FAILURE;
    }
    bench::Stopwatch watch;
    const std::string text = bench::ReadFile(argv[1]);
    rapidjson::Document recording;
    // Without the flag RapidJSON may miss the nearest double, and the documents would differ.
    recording.Parse<rapidjson::kParseFullPrecisionFlag>(text.data(), text.size());
    if (recording.HasParseError() || !(recording.IsObject() || recording.IsArray())) {
        std::fprintf(stderr, "%s: not an object or an array of JSON, at byte %zu\n", argv[1],
                     recording.GetErrorOffset());
        return EXIT_FAILURE;
    }
    std::uint64_t counter = 0;
    bench::WriteDocument(argv[2], "com.orvane.sensor.json",
                         [&](bench::Writer& writer) { WriteChildren(writer, recording, counter); });
    watch.Stop();
    watch.Print();
    std::printf("nodes %" PRIu64 "\n", counter);
    return EXIT_SUCCESS;
}
