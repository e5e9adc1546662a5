// The peer for JSON: the same document, byte for byte, made in the straightforward way from RapidJSON's tree of values.
// It reads what the JSON generator writes: no numbers whose text has an exponent.
#include <rapidjson/document.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "measure.h"
#include "peer_document.h"

namespace {

void WriteValues(bench::Writer& writer, const rapidjson::Value& parent, std::uint64_t& counter);

void WriteValue(bench::Writer& writer, std::string_view name, const rapidjson::Value& value, std::uint64_t& counter) {
    if (value.IsNull()) return;
    const bool isGroup = value.IsObject() || value.IsArray();
    writer.StartObject();
    bench::WriteNames(writer, isGroup ? "dataGroup" : "dataStatic", "matchName", counter++, name);
    if (isGroup) {
        writer.Key("children");
        writer.StartArray();
        WriteValues(writer, value, counter);
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

void WriteValues(bench::Writer& writer, const rapidjson::Value& parent, std::uint64_t& counter) {
    if (parent.IsObject()) {
        for (const auto& member : parent.GetObject()) {
            WriteValue(writer, {member.name.GetString(), member.name.GetStringLength()}, member.value, counter);
        }
        return;
    }
    std::size_t index = 0;
    for (const auto& element : parent.GetArray()) WriteValue(writer, std::to_string(index++), element, counter);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s INPUT.json OUT\n", argv[0]);
        return EXIT_FAILURE;
    }
    bench::Stopwatch watch;
    const std::string text = bench::ReadWhole(argv[1]);
    rapidjson::Document values;
    values.Parse<rapidjson::kParseFullPrecisionFlag>(text.data(), text.size());
    if (values.HasParseError()) bench::Fail(argv[1]);
    bench::PeerDocument document(argv[2], "com.orvane.sensor.json");
    std::uint64_t counter = 0;
    WriteValues(document.Nodes(), values, counter);
    document.Close();
    watch.Stop();
    watch.Print();
    return EXIT_SUCCESS;
}
