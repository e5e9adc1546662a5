// Writes the JSON text that the benchmark converts: records of a fleet of machines, several levels deep.
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "arguments.h"
#include "generated_file.h"

namespace {

constexpr std::array<std::string_view, 6> kTags = {"crane", "lift", "belt", "press", "pump", "fan"};

void WriteReading(bench::GeneratedFile& file, bench::SplitMix64& random, std::int64_t second) {
    file.Text("{\"t\":");
    file.Number(second, 0);
    file.Text(",\"v\":");
    file.Number(random.Around(999999), 4);
    file.Text(random.Next() % 16 == 0 ? ",\"ok\":false}" : ",\"ok\":true}");
}

void WriteRecord(bench::GeneratedFile& file, bench::SplitMix64& random, std::int64_t index) {
    file.Text("{\"id\":");
    file.Number(index, 0);
    file.Text(",\"name\":\"unit ");
    file.Number(static_cast<std::int64_t>(random.Next() % 977), 0);
    file.Text(random.Next() % 4 == 0 ? "\",\"on\":false,\"pos\":[" : "\",\"on\":true,\"pos\":[");
    file.Number(random.Around(900000), 4);  // a fifth decimal would take exponents to write
    file.Text(",");
    file.Number(random.Around(1800000), 4);
    file.Text(",");
    file.Number(random.Around(4000), 1);
    file.Text("],\"tags\":[\"");
    file.Text(kTags[random.Next() % kTags.size()]);
    file.Text("\",\"");
    file.Text(kTags[random.Next() % kTags.size()]);
    file.Text("\"],\"readings\":[");
    for (std::int64_t k = 0; k < 3; ++k) {
        if (k != 0) file.Text(",");
        WriteReading(file, random, index * 10 + k);
    }
    file.Text("],\"note\":null}");
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s RECORDS OUT.json\n", argv[0]);
        return EXIT_FAILURE;
    }
    const auto records = static_cast<std::int64_t>(bench::CountArgument(argv[1]));
    bench::GeneratedFile file(argv[2]);
    bench::SplitMix64 random;
    file.Text("{\"fleet\":[");
    for (std::int64_t index = 0; index < records; ++index) {
        file.Text(index == 0 ? "\n" : ",\n");
        WriteRecord(file, random, index);
    }
    file.Text("\n]}\n");
    file.Close();
    return EXIT_SUCCESS;
}
