// Writes documents to measure reading with; the same bytes on every machine.
//
//   samples COUNT            COUNT samples in six dynamic nodes, three of them arrays of 3: about 74 bytes a sample
//   nodes COUNT GROUP_SIZE   COUNT static numbers, GROUP_SIZE to a group
#include <array>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "arguments.h"
#include "generated_samples.h"

namespace {

constexpr std::size_t kPiece = 1 << 20;

class Output {
public:
    explicit Output(const char* path) : m_file(std::fopen(path, "wb")) {
        if (m_file == nullptr) bench::Fail(path);
    }
    ~Output() {
        Flush();
        if (std::fclose(m_file) != 0) bench::Fail("close");
    }
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    template <class... Values>
    void Format(const char* format, Values... values) {
        std::array<char, 1024> text;
        const int length = std::snprintf(text.data(), text.size(), format, values...);
        if (length < 0 || static_cast<std::size_t>(length) >= text.size()) bench::Fail("format");
        Text({text.data(), static_cast<std::size_t>(length)});
    }
    void Text(std::string_view text) {
        m_text += text;
        if (m_text.size() >= kPiece) Flush();
    }

private:
    void Flush() {
        if (std::fwrite(m_text.data(), 1, m_text.size(), m_file) != m_text.size()) bench::Fail("write");
        m_text.clear();
    }

    std::FILE* m_file;
    std::string m_text;
};

void SampleSet(Output& out, int node, std::uint64_t count) {
    out.Format("%s{\"sampleSetID\":\"set%d\",\"samples\":[", node == 0 ? "" : ",", node);
    const bool isArray = bench::IsArrayNode(node);
    std::string sample;
    for (std::uint64_t i = 0; i < count; ++i) {
        sample.assign(i == 0 ? "{\"time\":\"" : ",{\"time\":\"");
        bench::AppendTime(sample, bench::FrameOf(i, count));
        sample += isArray ? "\",\"value\":[\"" : "\",\"value\":\"";
        for (std::size_t element = 0; element < (isArray ? bench::kArraySize : 1); ++element) {
            if (element != 0) sample += "\",\"";
            bench::AppendNumber(sample, node, i, element);
        }
        sample += isArray ? "\"]}" : "\"}";
        out.Text(sample);
    }
    out.Text("]}");
}

constexpr const char* kRange =
    "{\"occurring\":{\"min\":-100000000,\"max\":100000000},\"legal\":{\"min\":-100000000,\"max\":100000000}}";

void DynamicNode(Output& out, int node, std::uint64_t count) {
    out.Format(
        "%s{\"objectType\":\"dataDynamic\",\"matchName\":\"node%d\",\"displayName\":\"Node %d\","
        "\"sampleSetID\":\"set%d\",\"interpolation\":\"linear\",\"hasExpectedFrequencyB\":false,"
        "\"sampleCount\":%" PRIu64 ",\"dataType\":{",
        node == 0 ? "" : ",", node, node, node, count);
    if (bench::IsArrayNode(node)) {
        out.Format(
            "\"type\":\"numberStringArray\",\"numberArrayProperties\":{\"pattern\":{\"isSigned\":true,"
            "\"digitsDecimal\":4,\"digitsInteger\":3},\"arrayRanges\":{\"ranges\":[%s,%s,%s]},\"arraySize\":3,"
            "\"arrayDisplayNames\":[]}}}",
            kRange, kRange, kRange);
    } else {
        out.Format(
            "\"type\":\"numberString\",\"numberStringProperties\":{\"pattern\":{\"isSigned\":true,"
            "\"digitsDecimal\":23,\"digitsInteger\":20},\"range\":%s}}}",
            kRange);
    }
}

void Samples(Output& out, std::uint64_t count) {
    out.Text(
        "{\"version\":\"vkjson2.0.0\",\"dynamicSamplesPresentB\":true,\"dynamicDataInfo\":{\"useTimecodeB\":true,"
        "\"timecodeInfo\":{\"frameRate\":{\"value\":30,\"scale\":1},\"dropFrame\":false}},\"dataDynamicSamples\":[");
    for (int node = 0; node < bench::kSampleNodes; ++node) SampleSet(out, node, count / bench::kSampleNodes);
    out.Text(
        "],\"creator\":\"bench\",\"dataOutline\":[{\"objectType\":\"dataGroup\",\"matchName\":\"all\","
        "\"displayName\":\"All\",\"children\":[");
    for (int node = 0; node < bench::kSampleNodes; ++node) DynamicNode(out, node, count / bench::kSampleNodes);
    out.Text("]}]}");
}

void StaticNumbers(Output& out, std::uint64_t count, std::uint64_t groupSize) {
    out.Text("{\"version\":\"vkjson2.0.0\",\"dynamicSamplesPresentB\":false,\"creator\":\"bench\",\"dataOutline\":[");
    for (std::uint64_t i = 0; i < count; ++i) {
        if (i % groupSize == 0) {
            out.Format("%s{\"objectType\":\"dataGroup\",\"matchName\":\"group%" PRIu64
                       "\",\"displayName\":\"\","
                       "\"children\":[",
                       i == 0 ? "" : ",", i / groupSize);
        }
        out.Format("%s{\"objectType\":\"dataStatic\",\"matchName\":\"data%" PRIu64 "\",\"displayName\":\"cell %" PRIu64
                   "\",\"dataType\":{\"type\":\"number\",\"numberStringProperties\":{\"pattern\":{\"isSigned\":false,"
                   "\"digitsDecimal\":1,\"digitsInteger\":3},\"range\":{\"occurring\":{\"min\":%" PRIu64
                   ".5,\"max\":%" PRIu64 ".5},\"legal\":{\"min\":0,\"max\":1000}}}},\"value\":%" PRIu64 ".5}",
                   i % groupSize == 0 ? "" : ",", i, i, i % 999, i % 999, i % 999);
        if (i % groupSize == groupSize - 1 || i == count - 1) out.Text("]}");
    }
    out.Text("]}");
}

}  // namespace

int main(int argc, char** argv) {
    const std::string_view kind = argc > 1 ? argv[1] : "";
    if (kind == "samples" && argc == 4) {
        Output out(argv[3]);
        Samples(out, bench::CountArgument(argv[2]));
    } else if (kind == "nodes" && argc == 5) {
        Output out(argv[4]);
        StaticNumbers(out, bench::CountArgument(argv[2]), bench::CountArgument(argv[3]));
    } else {
        std::fprintf(stderr, "usage: %s samples COUNT FILE | nodes COUNT GROUP_SIZE FILE\n", argv[0]);
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
