// The peer: the same document, byte for byte, made in the straightforward way with RapidJSON's Writer. It reads what
// the table generator writes: no quoted cells, no numbers whose text has an exponent, lines that end in a line feed.
#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "measure.h"
#include "peer_document.h"

namespace {

using Cells = std::vector<std::string_view>;

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

void WriteColumn(bench::Writer& writer, const Cells& column, std::uint64_t& counter) {
    const auto values = NumericValues(column);
    writer.StartObject();
    bench::WriteNames(writer, "dataGroup", "data" + std::to_string(counter++), column[0]);
    writer.Key("children");
    writer.StartArray();
    for (std::size_t i = 1; i < column.size(); ++i) {
        writer.StartObject();
        bench::WriteNames(writer, "dataStatic", "data" + std::to_string(counter++),
                          std::string(column[0]) + ' ' + std::to_string(i - 1));
        if (values) {
            bench::WriteNumber(writer, (*values)[i - 1]);
        } else {
            bench::WriteText(writer, column[i]);
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
    const std::string text = bench::ReadFile(argv[1]);
    bench::WriteDocument(argv[2], "com.orvane.sensor.csv", [&](bench::Writer& writer) {
        std::uint64_t counter = 0;
        for (const Cells& column : SplitColumns(text)) WriteColumn(writer, column, counter);
    });
    watch.Stop();
    watch.Print();
    return EXIT_SUCCESS;
}
