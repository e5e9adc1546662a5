// Writes the JSON recording that the benchmark converts: what a fleet of vehicles reports, each with where it is, how
// it is set up and its trips with the readings of its sensors. Compact, without escapes and without exponents.
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "arguments.h"
#include "generated_file.h"

namespace {

class Recording {
public:
    explicit Recording(const char* path) : m_file(path) {}

    void Write(std::uint64_t vehicles) {
        m_file.Text(R"({"fleet":"north","interval":0.25,"units":["s","V","C","bar","m/s"],"vehicles":[)");
        for (std::uint64_t vehicle = 0; vehicle < vehicles; ++vehicle) {
            m_file.Text(vehicle == 0 ? "\n" : ",\n");
            Vehicle(vehicle);
        }
        m_file.Text("\n]}\n");
        m_file.Close();
    }

private:
    void Vehicle(std::uint64_t vehicle) {
        m_file.Text(R"({"id":)");
        Integer(static_cast<std::int64_t>(vehicle));
        m_file.Text(R"(,"plate":)");
        Plate();
        m_file.Text(R"(,"active":)");
        Truth();
        m_file.Text(R"(,"driver":)");
        OneOf(kDrivers);
        m_file.Text(R"(,"home":{"lat":)");
        Decimal(48137154, 900000, 6);
        m_file.Text(R"(,"lon":)");
        Decimal(11576124, 900000, 6);
        m_file.Text(R"(},"setup":{"gains":[)");
        List(4, [&] { Decimal(1000, 250, 3); });
        m_file.Text(R"(],"tags":[)");
        List(Between(1, 3), [&] { OneOf(kTags); });
        m_file.Text(R"(],"on":[)");
        List(5, [&] { Truth(); });
        m_file.Text(R"(]},"trips":[)");
        List(Between(3, 7), [&] { Trip(); });
        m_file.Text("]}");
    }

    void Trip() {
        m_time += Between(30, 4000);
        m_file.Text(R"({"time":)");
        m_file.Number(m_time, 2);
        m_file.Text(R"(,"ok":)");
        Truth();
        m_file.Text(R"(,"mode":)");
        OneOf(kModes);
        m_file.Text(R"(,"gps":[)");
        Decimal(48137154, 900000, 6);
        m_file.Text(",");
        Decimal(11576124, 900000, 6);
        m_file.Text(",");
        Decimal(5190, 400, 1);
        m_file.Text(R"(],"wheels":[)");
        List(4, [&] { Wheel(); });
        m_file.Text(R"(],"temps":[)");
        List(7, [&] { Decimal(215, 280, 1); });
        m_file.Text(R"(],"faults":[)");
        List(Between(0, 3), [&] { OneOf(kFaults); });
        m_file.Text("]}");
    }

    void Wheel() {
        m_file.Text(R"({"bar":)");
        Decimal(240, 30, 2);
        m_file.Text(R"(,"rpm":)");
        Integer(Between(0, 1400));
        m_file.Text(R"(,"slip":)");
        Truth();
        m_file.Text(R"(,"note":)");
        OneOf(kNotes);
        m_file.Text("}");
    }

    std::int64_t Between(std::int64_t first, std::int64_t last) {
        return first + static_cast<std::int64_t>(m_random.Next() % static_cast<std::uint64_t>(last - first + 1));
    }
    void Integer(std::int64_t value) { m_file.Number(value, 0); }
    void Decimal(std::int64_t middle, std::int64_t spread, int decimals) {
        m_file.Number(middle + m_random.Around(spread), decimals);
    }
    void Truth() { m_file.Text(m_random.Next() % 4 == 0 ? "false" : "true"); }
    template <std::size_t kCount>
    void OneOf(const std::array<std::string_view, kCount>& texts) {
        m_file.Text(texts[m_random.Next() % kCount]);
    }
    void Plate() {
        const std::array<char, 4> letters = {'"', static_cast<char>(Between('A', 'Z')),
                                             static_cast<char>(Between('A', 'Z')), '-'};
        m_file.Text({letters.data(), letters.size()});
        Integer(Between(100, 9999));
        m_file.Text("\"");
    }
    template <typename WriteElement>
    void List(std::int64_t count, const WriteElement& writeElement) {
        for (std::int64_t i = 0; i < count; ++i) {
            if (i != 0) m_file.Text(",");
            writeElement();
        }
    }

    // Quoted, because some of the values are missing.
    static constexpr std::array<std::string_view, 6> kDrivers = {R"("Ada")",  R"("Bo")",  R"("Claus")",
                                                                 R"("Dora")", R"("Eli")", "null"};
    static constexpr std::array<std::string_view, 4> kTags = {R"("van")", R"("cold")", R"("hybrid")", R"("lease")"};
    static constexpr std::array<std::string_view, 5> kModes = {R"("eco")", R"("city")", R"("sport")", R"("tow")",
                                                               "null"};
    static constexpr std::array<std::string_view, 4> kFaults = {R"("P0301")", R"("P0420")", R"("U0100")", "null"};
    static constexpr std::array<std::string_view, 5> kNotes = {R"("ok")", R"("worn")", R"("low")", R"("new")", "null"};

    bench::GeneratedFile m_file;
    bench::SplitMix64 m_random;
    std::int64_t m_time = 0;
};

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s VEHICLES OUT.json\n", argv[0]);
        return EXIT_FAILURE;
    }
    Recording(argv[2]).Write(bench::CountArgument(argv[1]));
    return EXIT_SUCCESS;
}
