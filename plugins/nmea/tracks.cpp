#include "tracks.h"

namespace nmea {

namespace {

using ZT_PLUGIN::Between;

struct NumberTrack {
    const char* matchName;
    const char* displayName;
    Between between;
    double minimum;  // the legal range; none where both bounds are the same
    double maximum;
};

// A course does not run through south on its way from 359 to 1 degree, so it holds.
constexpr std::array<NumberTrack, kNumberCount> kNumberTracks = {{
    {"latitude", "Latitude (degrees)", Between::kLinear, -90, 90},
    {"longitude", "Longitude (degrees)", Between::kLinear, -180, 180},
    {"altitude", "Altitude above mean sea level (m)", Between::kLinear, 0, 0},
    {"geoidSeparation", "Geoid separation (m)", Between::kLinear, 0, 0},
    {"speed", "Speed over ground (knots)", Between::kLinear, 0, 0},
    {"course", "Course over ground (degrees)", Between::kHold, 0, 360},
    {"satellites", "Satellites in use", Between::kHold, 0, 0},
    {"hdop", "Horizontal dilution of precision", Between::kHold, 0, 0},
    {"pdop", "Position dilution of precision", Between::kHold, 0, 0},
    {"vdop", "Vertical dilution of precision", Between::kHold, 0, 0},
}};

struct TextTrack {
    const char* matchName;
    const char* displayName;
};

constexpr std::array<TextTrack, kTextCount> kTextTracks = {{
    {"fixQuality", "Fix quality"},
    {"fixMode", "Fix mode"},
    {"status", "Receiver status"},
}};

}  // namespace

Tracks::Tracks(ZT_PLUGIN::Conversion& conversion, ZT_PLUGIN::Group& group, const LogFacts& facts) {
    for (std::uint32_t i = 0; i < facts.decimals; ++i) ticksPerSecond_ *= 10;
    nanosecondsPerTick_ = 1'000'000'000 / ticksPerSecond_;
    for (std::size_t i = 0; i < kNumberCount; ++i) {
        if (facts.numbers[i] == 0) continue;
        const NumberTrack& track = kNumberTracks[i];
        numbers_[i] = conversion.CreateDynamicNumber({track.matchName, track.displayName, track.between});
        if (track.minimum != track.maximum) numbers_[i].SetLegalRange(track.minimum, track.maximum);
        group.Add(numbers_[i]);
    }
    for (std::size_t i = 0; i < kTextCount; ++i) {
        if (facts.texts[i] == 0) continue;
        texts_[i] =
            conversion.CreateDynamicText({kTextTracks[i].matchName, kTextTracks[i].displayName, Between::kHold});
        group.Add(texts_[i]);
    }
}

void Tracks::Add(const Epoch& epoch) {
    const ZT_PLUGIN::Ticks time{epoch.time / nanosecondsPerTick_, ticksPerSecond_};
    for (std::size_t i = 0; i < kNumberCount; ++i) {
        if (epoch.numbers[i]) numbers_[i].AddSample(time, *epoch.numbers[i]);
    }
    for (std::size_t i = 0; i < kTextCount; ++i) {
        if (epoch.texts[i] != nullptr) texts_[i].AddSample(time, epoch.texts[i]);
    }
}

}  // namespace nmea
