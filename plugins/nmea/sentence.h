// NMEA 0183 sentences: "$ttsss,field,field*hh", tt the talker, sss the kind, hh the exclusive or of all bytes between
// "$" and "*".
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace nmea {

enum class SentenceState : std::uint8_t {
    kSound,     // with the right checksum
    kUnsummed,  // well-formed, without a checksum
    kDamaged,   // with a wrong checksum
    kNone,      // no sentence at all
};

// Its texts are part of the line that it was read from.
class Sentence {
public:
    static constexpr std::size_t kMaxFields = 40;

    // Takes a line apart. A tag block before the sentence ("\...\") is passed over. Sentences of encapsulated data
    // ("!...") are sentences, too. After kMaxFields, fields are left out.
    SentenceState Read(std::string_view line);

    std::string_view Address() const { return fields_[0]; }
    // Two letters, or "P" of a proprietary sentence.
    std::string_view Talker() const;
    // Three letters, or nothing of a sentence whose layout is its maker's own.
    std::string_view Kind() const;

    // From 1 on. Empty when the sentence has not as many.
    std::string_view Field(std::size_t number) const { return number < count_ ? fields_[number] : std::string_view(); }

private:
    bool isEncapsulated_ = false;
    std::array<std::string_view, kMaxFields + 1> fields_;
    std::size_t count_ = 0;
};

}  // namespace nmea
