// Writes the table that the benchmark converts: eight numeric columns and one text column, like the log of a vehicle.
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "arguments.h"
#include "generated_file.h"

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s ROWS OUT.csv\n", argv[0]);
        return EXIT_FAILURE;
    }
    constexpr std::array<std::string_view, 8> states = {"idle",  "walking", "running", "cycling",
                                                        "drive", "brake",   "turn",    "standby"};
    const std::uint64_t rows = bench::CountArgument(argv[1]);
    bench::GeneratedFile table(argv[2]);
    bench::SplitMix64 random;
    std::int64_t centiseconds = 0, temperature = 2150, pressure = 101325, latitude = 4813715, longitude = -1157612;
    std::int64_t count = 0;
    table.Text("time,accel_x,accel_y,temperature,pressure,latitude,longitude,count,state\n");
    for (std::uint64_t row = 0; row < rows; ++row) {
        table.Number(centiseconds, 2);
        table.Text(",");
        table.Number(random.Around(19613), 3);
        table.Text(",");
        table.Number(random.Around(19613), 3);
        table.Text(",");
        table.Number(temperature, 2);
        table.Text(",");
        table.Number(pressure, 2);
        table.Text(",");
        table.Number(latitude, 5);
        table.Text(",");
        table.Number(longitude, 5);
        table.Text(",");
        table.Number(count, 0);
        table.Text(",");
        table.Text(states[random.Next() % states.size()]);
        table.Text("\n");
        centiseconds += 1 + (random.Next() % 64 == 0 ? 1 : 0);
        temperature += random.Around(3);
        pressure += random.Around(4);
        latitude += random.Around(3);
        longitude += random.Around(3);
        count += random.Next() % 8 == 0 ? 1 : 0;
    }
    table.Close();
    return EXIT_SUCCESS;
}
