// The peer: the same document, byte for byte, made in the straightforward way with RapidJSON's Writer. It reads what
// the table generator writes: no quoted cells, no numbers whose text has an exponent, lines that end in a line feed.
#include <rapidjson/filewritestream.h>
#include <rapidjson/writer.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "measure.h"

namespace {

using Writer = rapidjson::Writer<rapidjson::FileWriteStream>;
using Cells = std::vector<std::string_view>;

std::string ReadFile(const char* path) {
    std::FILE* const file = std::fopen(path, "rb");
    if (file == nullptr || std::fseek(file, 0, SEEK_END) != 0) bench::Fail(path);
    const long size = std::ftell(file);
    if (size < 0 || std::fseek(file, 0, SEEK_SET) != 0) bench::Fail(path);
    std::string text(static_cast<std::size_t>(size), '\0');
    if (std::fread(text.data(), 1, text.size(), file) != text.size()) bench::Fail(path);
    std::fclose(file);
    return text;
}

std::string_view TakeUntil(std::string_view& rest, char separator) {
    const std::string_view part = rest.substr(0, rest.find(separator));
    rest.remove_prefix(std::min(part.size() + 1, rest.size()));
    return part;
}

// The columns of the table, each with its name in front.
std::vector<Cells> SplitColumns(std::string_view text) {
    std::vector<Cells> columns;
    for (std::string_view names = TakeUntil(text, '\n'); !names.empty();) columns.push_back({TakeUntil(names, ',')});
    while (!text.empty()) {
        std::string_view line = TakeUntil(text, '\n');
        for (Cells& column : columns) column.push_back(TakeUntil(line, ','));
    }
    return columns;
}

// The values of a numeric column, in which an empty cell is 0; nothing for a column of text.
std::optional<std::vector<double>> NumericValues(const Cells& column) {
    std::vector<double> values;
    values.reserve(column.size() - 1);
    for (std::size_t i = 1; i < column.size(); ++i) {
        const char* const end = column[i].data() + column[i].size();
        double value = 0;
        // from_chars alone would also take "inf" and "nan".
        if (column[i].find_first_not_of("0123456789+-.eE") != std::string_view::npos) return std::nullopt;
        if (!column[i].empty()) {
            const auto [stop, error] = std::from_chars(column[i].data(), end, value);
            if (error != std::errc() || stop != end) return std::nullopt;
        }
        values.push_back(value);
    }
    return values;
}

void WriteString(Writer& writer, std::string_view text) {
    writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
}

void WriteNames(Writer& writer, const char* objectType, std::uint64_t counter, std::string_view displayName) {
    writer.Key("objectType");
    writer.String(objectType);
    writer.Key("matchName");
    WriteString(writer, "data" + std::to_string(counter));
    writer.Key("displayName");
    WriteString(writer, displayName);
}

void WriteNumber(Writer& writer, double value) {
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

void WriteText(Writer& writer, std::string_view text) {
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

void WriteColumn(Writer& writer, const Cells& column, std::uint64_t& counter) {
    const auto values = NumericValues(column);
    writer.StartObject();
    WriteNames(writer, "dataGroup", counter++, column[0]);
    writer.Key("children");
    writer.StartArray();
    for (std::size_t i = 1; i < column.size(); ++i) {
        writer.StartObject();
        WriteNames(writer, "dataStatic", counter++, std::string(column[0]) + ' ' + std::to_string(i - 1));
        if (values) {
            WriteNumber(writer, (*values)[i - 1]);
        } else {
            WriteText(writer, column[i]);
        }
        writer.EndObject();
    }
    writer.EndArray();
    writer.EndObject();
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s INPUT.csv OUT\n", argv[0]);
        return EXIT_FAILURE;
    }
    bench::Stopwatch watch;
    const std::string text = ReadFile(argv[1]);
    std::FILE* const file = std::fopen(argv[2], "wb");
    if (file == nullptr) bench::Fail(argv[2]);
    std::vector<char> buffer(1 << 20);
    rapidjson::FileWriteStream output(file, buffer.data(), buffer.size());
    Writer writer(output);

    std::uint64_t counter = 0;
    writer.StartObject();
    writer.Key("version");
    writer.String("vkjson2.0.0");
    writer.Key("dynamicSamplesPresentB");
    writer.Bool(false);
    writer.Key("creator");
    writer.String("com.orvane.sensor.csv");
    writer.Key("dataOutline");
    writer.StartArray();
    for (const Cells& column : SplitColumns(text)) WriteColumn(writer, column, counter);
    writer.EndArray();
    writer.EndObject();
    output.Flush();
    // The stream drops the results of its writes; the file remembers a failure.
    if (std::ferror(file) != 0 || std::fclose(file) != 0) bench::Fail(argv[2]);
    watch.Stop();
    watch.Print();
    return EXIT_SUCCESS;
}
