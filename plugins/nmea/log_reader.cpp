#include "log_reader.h"

#include <algorithm>
#include <utility>

namespace nmea {

namespace {

constexpr std::int64_t kHour = 3'600'000'000'000;  // in nanoseconds
constexpr std::int64_t kDay = 24 * kHour;

bool IsBlank(std::string_view text) { return text.find_first_not_of(" \t") == std::string_view::npos; }

}  // namespace

bool HasChecksums(const std::string& path) {
    LineReader lines(path);
    Line line{};
    Sentence sentence;
    while (lines.Next(line)) {
        if (sentence.Read(line.text) == SentenceState::kSound) return true;
    }
    return false;
}

LogReader::LogReader(const std::string& path, bool hasChecksums, std::optional<std::int64_t> firstDay, OnEpoch onEpoch)
    : lines_(path), onEpoch_(std::move(onEpoch)), day_(firstDay.value_or(0)) {
    facts_.hasChecksums = hasChecksums;
    facts_.firstDay = firstDay;
}

LogFacts LogReader::Read() {
    Line line{};
    while (lines_.Next(line)) {
        facts_.lines = line.number;
        if (!IsBlank(line.text)) Take(line);
    }
    EndEpoch();
    facts_.length = lines_.Offset();
    return std::move(facts_);
}

void LogReader::Take(const Line& line) {
    const SentenceState state = sentence_.Read(line.text);
    const bool isSound = state == SentenceState::kSound || (state == SentenceState::kUnsummed && !facts_.hasChecksums);
    bool isDamaged = !isSound;
    if (!isDamaged) {
        switch (ReadSentence(sentence_, reading_)) {
            case ReadingState::kRead:
                Add(reading_);
                break;
            case ReadingState::kOfNoUse:
                ++facts_.ofNoUse;
                break;
            case ReadingState::kDamaged:
                isDamaged = true;
                break;
        }
    }
    if (!isDamaged) {
        if (facts_.talkers.find(sentence_.Talker()) == facts_.talkers.end()) facts_.talkers.emplace(sentence_.Talker());
    } else if (++facts_.damaged == 1) {
        facts_.firstDamaged = line.offset;
        facts_.firstDamagedLine = line.number;
    }
}

void LogReader::Add(const Reading& reading) {
    ++facts_.sentences;
    if (reading.isTimed) {
        if (!reading.time) return;
        if (timeOfDay_ != reading.time->nanoseconds) EndEpoch();
        timeOfDay_ = reading.time->nanoseconds;
        facts_.decimals = std::max(facts_.decimals, reading.time->decimals);
    } else if (!timeOfDay_) {
        return;
    }
    if (!date_) date_ = reading.day;
    for (std::size_t i = 0; i < kNumberCount; ++i) {
        if (!epoch_.numbers[i]) epoch_.numbers[i] = reading.values.numbers[i];
    }
    for (std::size_t i = 0; i < kTextCount; ++i) {
        if (epoch_.texts[i] == nullptr) epoch_.texts[i] = reading.values.texts[i];
    }
}

// The first date puts all epochs before it in their place.
void LogReader::SetDate(std::int64_t day) {
    if (!facts_.firstDay) {
        facts_.firstDay = day - day_;
        facts_.firstTime += *facts_.firstDay * kDay;
        facts_.lastTime += *facts_.firstDay * kDay;
    }
    day_ = day;
}

void LogReader::EndEpoch() {
    if (!timeOfDay_) return;
    if (lastTimeOfDay_ && *timeOfDay_ < *lastTimeOfDay_ - 12 * kHour) ++day_;
    if (date_) SetDate(*date_);
    epoch_.time = day_ * kDay + *timeOfDay_;
    if (facts_.epochs != 0 && epoch_.time <= facts_.lastTime) {
        ++facts_.epochsOutOfOrder;
    } else {
        if (facts_.epochs++ == 0) facts_.firstTime = epoch_.time;
        facts_.lastTime = epoch_.time;
        for (std::size_t i = 0; i < kNumberCount; ++i) facts_.numbers[i] += epoch_.numbers[i] ? 1 : 0;
        for (std::size_t i = 0; i < kTextCount; ++i) facts_.texts[i] += epoch_.texts[i] != nullptr ? 1 : 0;
        if (onEpoch_) onEpoch_(epoch_);
    }
    lastTimeOfDay_ = std::exchange(timeOfDay_, std::nullopt);
    date_.reset();
    epoch_ = {};
}

}  // namespace nmea
