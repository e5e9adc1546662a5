// NMEA 0183 logs become documents: facts about the receiver, and its track by UTC time.
#include <zentor/plugin/converter.h>

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
        const LogFacts facts = nmea::LogReader(path, hasChecksums, std::nullopt, nullptr).Read();
        if (facts.numbers[nmea::kLatitude] == 0 || !facts.firstDay) {
            if (facts.damaged != 0) ZT_PLUGIN::RefuseInput(facts.firstDamaged, facts.firstDamagedLine);
            ZT_PLUGIN::RefuseInput(facts.length, facts.lines);
        }
        auto root = conversion.CreateRoot(conversion.ConverterId());
        root.SetUtc(facts.decimals, true);
        root.Add(ReceiverGroup(conversion, facts));
        auto group = conversion.CreateGroup("track", "Track");
        root.Add(group);
        nmea::Tracks tracks(conversion, group, facts);
        nmea::LogReader(path, hasChecksums, facts.firstDay, [&](const nmea::Epoch& epoch) {
            tracks.Add(epoch);
        }).Read();
        return root.Write();
    }
};

}  // namespace

ZENTOR_PLUGIN(NmeaConverter)
