// NMEA 0183 logs become documents: facts about the receiver, and its track by UTC time.
#include <zentor/plugin/converter.h>
#include <zentor/plugin/iso_time.h>

#include "log_reader.h"
#include "tracks.h"

namespace {

using nmea::LogFacts;

std::string Joined(const std::set<std::string, std::less<>>& words) {
    std::string text;
    for (const std::string& word : words) text += (text.empty() ? "" : " ") + word;
    return text;
}

ZT_PLUGIN::Group ReceiverGroup(ZT_PLUGIN::Conversion& conversion, const LogFacts& facts) {
    auto group = conversion.CreateGroup("receiver", "Receiver");
    const auto addCount = [&](const char* matchName, const char* displayName, std::int64_t count) {
        group.Add(conversion.CreateNumber(matchName, displayName, static_cast<double>(count)));
    };
    group.Add(conversion.CreateText("talkers", "Talkers", Joined(facts.talkers)));
    group.Add(conversion.CreateBool("checksums", "Sentences have checksums", facts.hasChecksums));
    addCount("sentences", "Sentences used", facts.sentences);
    addCount("otherSentences", "Sentences of other kinds", facts.ofNoUse);
    addCount("damagedLines", "Damaged lines", facts.damaged);
    addCount("epochs", "Epochs", facts.epochs);
    addCount("epochsOutOfOrder", "Epochs out of order, left out", facts.epochsOutOfOrder);
    group.Add(conversion.CreateNumber("duration", "Duration (s)",
                                      static_cast<double>(facts.lastTime - facts.firstTime) / 1e9));
    return group;
}

// The day that the host says the log begins on, as days since 1970-01-01.
std::optional<std::int64_t> DayOfHost(const ZT_PLUGIN::Conversion& conversion) {
    const char* const text = conversion.Parameter("date");
    if (text == nullptr) return std::nullopt;
    constexpr std::size_t kDateSize = 10;  // yyyy-mm-dd
    constexpr std::int64_t kSecondsOfDay = 86400;
    ZT_PLUGIN::IsoTime time;
    if (std::string(text).size() != kDateSize || !ZT_PLUGIN::ParseIsoTime(text, time)) {
        conversion.Refuse("the parameter date is \"" + std::string(text) + "\"; it is a day such as 2026-06-20");
    }
    return time.seconds / kSecondsOfDay;
}

// Says what keeps a log from being converted, at its first damaged line, or at its end.
void CheckFacts(const ZT_PLUGIN::Conversion& conversion, const LogFacts& facts) {
    const bool isDamaged = facts.damaged != 0;
    const std::int64_t offset = isDamaged ? facts.firstDamaged : facts.length;
    const std::int64_t line = isDamaged ? facts.firstDamagedLine : facts.lines;
    const std::string damage = isDamaged ? "; lines that are no sound sentences: " + std::to_string(facts.damaged) : "";
    if (facts.sentences + facts.ofNoUse == 0) {
        conversion.Refuse("this is no NMEA 0183 log, or all of it is damaged: no line is a sound sentence", offset,
                          line);
    }
    if (facts.numbers[nmea::kLatitude] == 0) {
        conversion.Refuse("the log has no position: no RMC or GGA sentence with one" + damage, offset, line);
    }
    if (!facts.firstDay) {
        conversion.Refuse("the log has no date: no RMC or ZDA sentence with one" + damage +
                              "; --set date=2026-06-20 says on which day it begins",
                          offset, line);
    }
}

void TellLosses(const ZT_PLUGIN::Conversion& conversion, const LogFacts& facts) {
    const auto tell = [&](const std::string& what, std::int64_t count, std::int64_t offset, std::int64_t line) {
        if (count == 0) return;
        conversion.Notice(what + ", left out: " + std::to_string(count), static_cast<std::uint64_t>(count), offset,
                          line);
    };
    tell("lines that are no sound sentences", facts.damaged, facts.firstDamaged, facts.firstDamagedLine);
    tell("epochs that are not after those before them", facts.epochsOutOfOrder, -1, -1);
}

class NmeaConverter {
public:
    // Whether one of the first lines begins like a sentence; how sound it is shows when it is converted.
    static bool CheckFormat(const std::string& inputPath) {
        constexpr std::int64_t kLines = 100;
        nmea::LineReader lines(inputPath);
        nmea::Line line{};
        nmea::Sentence sentence;
        while (lines.Next(line) && line.number <= kLines) {
            if (sentence.Read(line.text) != nmea::SentenceState::kNone) return true;
        }
        return false;
    }

    static bool Convert(ZT_PLUGIN::Conversion& conversion) {
        const std::string& path = conversion.InputPath();
        const bool hasChecksums = nmea::HasChecksums(path);
        const std::optional<std::int64_t> dayOfHost = DayOfHost(conversion);
        LogFacts facts = nmea::LogReader(path, hasChecksums, std::nullopt, nullptr).Read();
        // The log knows best.
        if (dayOfHost && facts.firstDay)
            conversion.Notice("the log has dates of its own, the parameter date was not used");
        if (dayOfHost && !facts.firstDay) facts = nmea::LogReader(path, hasChecksums, dayOfHost, nullptr).Read();
        CheckFacts(conversion, facts);
        auto root = conversion.CreateRoot(conversion.ConverterId());
        root.SetUtc(facts.decimals, true);
        root.Add(ReceiverGroup(conversion, facts));
        auto group = conversion.CreateGroup("track", "Track");
        root.Add(group);
        nmea::Tracks tracks(conversion, group, facts);
        nmea::LogReader(path, hasChecksums, facts.firstDay, [&](const nmea::Epoch& epoch) {
            tracks.Add(epoch);
        }).Read();
        TellLosses(conversion, facts);
        return root.Write();
    }
};

}  // namespace

ZENTOR_PLUGIN(NmeaConverter)
