#include "readings.h"

#include <limits>

namespace nmea {

namespace {

constexpr double kAny = std::numeric_limits<double>::max();

bool ReadPosition(const Sentence& sentence, std::size_t first, Epoch& values) {
    std::optional<double>& latitude = values.numbers[kLatitude];
    std::optional<double>& longitude = values.numbers[kLongitude];
    return ReadAngle(sentence.Field(first), sentence.Field(first + 1), 'N', 'S', 90, latitude) &&
           ReadAngle(sentence.Field(first + 2), sentence.Field(first + 3), 'E', 'W', 180, longitude) &&
           latitude.has_value() == longitude.has_value();
}

// A word for a character of a field; an empty field has none.
template <std::size_t kCount>
bool ReadWord(std::string_view field, char first, const char* const (&words)[kCount], const char*& word) {
    if (field.empty()) return true;
    const auto index = static_cast<std::size_t>(static_cast<unsigned char>(field[0] - first));
    if (field.size() != 1 || index >= kCount) return false;
    word = words[index];
    return true;
}

// time, status, latitude, N, longitude, E, speed in knots, course, date, ...
bool ReadRmc(const Sentence& sentence, Reading& reading) {
    Epoch& values = reading.values;
    const std::string_view status = sentence.Field(2);
    reading.isTimed = true;
    const bool isGood =
        ReadTime(sentence.Field(1), reading.time) && (status == "A" || status == "V") &&
        ReadPosition(sentence, 3, values) && ReadNumber(sentence.Field(7), 0, kAny, values.numbers[kSpeed]) &&
        ReadNumber(sentence.Field(8), 0, 360, values.numbers[kCourse]) && ReadDate(sentence.Field(9), reading.day);
    if (!isGood) return false;
    if (status == "V") {
        values = {};
        reading.day.reset();  // often that of a clock which has not been set yet
    }
    values.texts[kStatus] = status == "A" ? "valid" : "warning";
    return true;
}

// time, latitude, N, longitude, E, quality, satellites, HDOP, altitude, M, geoid separation, M, ...
bool ReadGga(const Sentence& sentence, Reading& reading) {
    static constexpr const char* kQualities[] = {"no fix",    "GPS fix",   "differential fix", "PPS fix",   "RTK fixed",
                                                 "RTK float", "estimated", "manual input",     "simulator", "other"};
    Epoch& values = reading.values;
    reading.isTimed = true;
    const bool isGood = ReadTime(sentence.Field(1), reading.time) && ReadPosition(sentence, 2, values) &&
                        ReadWord(sentence.Field(6), '0', kQualities, values.texts[kFixQuality]) &&
                        ReadNumber(sentence.Field(7), 0, 999, values.numbers[kSatellites]) &&
                        ReadNumber(sentence.Field(8), 0, kAny, values.numbers[kHdop]) &&
                        ReadNumber(sentence.Field(9), -kAny, kAny, values.numbers[kAltitude]) &&
                        ReadNumber(sentence.Field(11), -kAny, kAny, values.numbers[kGeoidSeparation]);
    if (!isGood) return false;
    if (values.texts[kFixQuality] == kQualities[0]) {
        for (const Number number : {kLatitude, kLongitude, kAltitude}) values.numbers[number].reset();
    }
    return true;
}

// automatic or manual, mode, 12 satellites, PDOP, HDOP, VDOP
bool ReadGsa(const Sentence& sentence, Reading& reading) {
    static constexpr const char* kModes[] = {"no fix", "2D fix", "3D fix"};
    Epoch& values = reading.values;
    return ReadWord(sentence.Field(2), '1', kModes, values.texts[kFixMode]) &&
           ReadNumber(sentence.Field(15), 0, kAny, values.numbers[kPdop]) &&
           ReadNumber(sentence.Field(16), 0, kAny, values.numbers[kHdop]) &&
           ReadNumber(sentence.Field(17), 0, kAny, values.numbers[kVdop]);
}

// true course, T, magnetic course, M, speed in knots, N, speed in km/h, K, mode; receivers of the oldest kind leave out
// the letters
bool ReadVtg(const Sentence& sentence, Reading& reading) {
    Epoch& values = reading.values;
    const bool hasLetters = sentence.Field(2) == "T";
    if (!ReadNumber(sentence.Field(1), 0, 360, values.numbers[kCourse]) ||
        !ReadNumber(sentence.Field(hasLetters ? 5 : 3), 0, kAny, values.numbers[kSpeed])) {
        return false;
    }
    if (sentence.Field(9) == "N") values = {};  // the mode: not valid
    return true;
}

// time, day, month, year, ...
bool ReadZda(const Sentence& sentence, Reading& reading) {
    reading.isTimed = true;
    return ReadTime(sentence.Field(1), reading.time) &&
           ReadDate(sentence.Field(2), sentence.Field(3), sentence.Field(4), reading.day);
}

}  // namespace

ReadingState ReadSentence(const Sentence& sentence, Reading& reading) {
    static constexpr struct {
        std::string_view kind;
        bool (*read)(const Sentence& sentence, Reading& reading);
    } kKinds[] = {{"RMC", ReadRmc}, {"GGA", ReadGga}, {"GSA", ReadGsa}, {"VTG", ReadVtg}, {"ZDA", ReadZda}};
    reading = {};
    const std::string_view kind = sentence.Kind();
    for (const auto& known : kKinds) {
        if (known.kind == kind) return known.read(sentence, reading) ? ReadingState::kRead : ReadingState::kDamaged;
    }
    return ReadingState::kOfNoUse;
}

}  // namespace nmea
