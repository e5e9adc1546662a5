#include "reader/parser.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "errors/exception.h"
#include "errors/last_exception.h"
#include "errors/raise.h"
#include "format/version.h"
#include "format/words.h"
#include "reader/outline_check.h"
#include "reader/outline_scan.h"
#include "reader/parser_versions.h"
#include "reader/value_reader.h"

namespace zentor {

namespace {

constexpr std::array<std::string_view, kTopLevelKeys> kNames = {words::kVersion,
                                                                words::kCreator,
                                                                words::kUseTimecode,
                                                                words::kUtcInfo,
                                                                words::kTimecodeInfo,
                                                                words::kDataOutline,
                                                                words::kDataDynamicSamples,
                                                                words::kVideoSyncTimeList,
                                                                words::kDynamicSamplesPresent,
                                                                words::kDynamicDataInfo};

std::int64_t Detail(std::size_t offset) { return static_cast<std::int64_t>(offset); }

// A number as a part of the frame rate that hosts get; 0 when it is none.
std::uint32_t WholeOrZero(double number) {
    if (number > std::numeric_limits<std::uint32_t>::max() || std::trunc(number) != number) return 0;
    return static_cast<std::uint32_t>(number);
}

}  // namespace

std::string_view NameOf(TopLevelKey key) { return kNames[static_cast<std::size_t>(key)]; }

std::unique_ptr<VkjsonDocument> ParseDocument(std::string_view bytes, ParserChoice choice, const PassedOffset& passed) {
    if (choice == ParserChoice::kProbe) {
        choice = BeginsAsVersion2(bytes, LetterCase::kExact) ? ParserChoice::kVersion2 : ParserChoice::kVersion1;
    }
    const auto makeParser = [&](bool gallop) -> std::unique_ptr<ZT_VkjsonParser> {
        if (choice == ParserChoice::kVersion2) return std::make_unique<ZT_VkjsonParser_v2>(bytes, gallop, passed);
        return std::make_unique<ZT_VkjsonParser_v1>(bytes, gallop, passed);
    };
    const LastExceptionScope lastException;
    const auto parser = makeParser(true);
    try {
        return parser->Parse();
    } catch (const ns_sensor::ZT_Exception&) {
        if (!parser->HasGalloped()) throw;
    }
    // What looked like the end of the samples may have been none.
    return makeParser(false)->Parse();
}

std::unique_ptr<VkjsonDocument> ZT_VkjsonParser::Parse() {
    cursor_.SkipWhiteSpace();
    if (!cursor_.Skip('{')) Raise({kOpeningBracketNotFound, Detail(cursor_.Offset())});
    cursor_.SkipWhiteSpace();
    for (bool atEnd = cursor_.Skip('}'); !atEnd;) {
        cursor_.SkipWhiteSpace();
        if (cursor_.AtEnd()) Raise({kInvalidJson, Detail(cursor_.Offset())});
        const std::string_view key = NameOf(ReadProperty());
        cursor_.SkipWhiteSpace();
        if (cursor_.AtEnd()) Raise({kInvalidJson, Detail(cursor_.Offset())}, Quoted(key));
        atEnd = cursor_.Skip('}');
        if (!atEnd && !cursor_.Skip(',')) Raise({kInvalidPropertyMissingComma, Detail(cursor_.Offset())}, key);
    }
    CheckMandatoryProperties(cursor_.Offset() - 1);
    cursor_.SkipWhiteSpace();
    if (!cursor_.AtEnd()) Raise({kInvalidJson, Detail(cursor_.Offset())});
    if (document_->timeForm) document_->samples.IndexSamples(cursor_.Bytes(), *document_->timeForm, outline_);
    document_->outline = Outline(std::move(outline_.index), Validator());
    return std::move(document_);
}

TopLevelKey ZT_VkjsonParser::ReadProperty() {
    const std::size_t keyOffset = cursor_.Offset();
    RawString key;
    if (!cursor_.TakeString(key)) Raise({kInvalidKeyMissingQuotes, Detail(keyOffset)});
    const std::string name = Excerpt(key.Decoded());
    cursor_.SkipWhiteSpace();
    if (!cursor_.Skip(':')) Raise({kInvalidPropertyMissingColon, Detail(cursor_.Offset())}, name);
    const auto found = std::find(kNames.begin(), kNames.end(), name);
    if (found == kNames.end()) Raise({kFoundUnrecognisedKey, Detail(keyOffset)}, name);
    const auto known = static_cast<TopLevelKey>(found - kNames.begin());
    if (Has(known)) Raise({kInvalidJson, Detail(keyOffset)}, Quoted(name));
    cursor_.SkipWhiteSpace();
    ReadCommonProperty(known, keyOffset);
    offsets_[static_cast<std::size_t>(known)] = keyOffset;
    return known;
}

void ZT_VkjsonParser::ReadCommonProperty(TopLevelKey key, std::size_t keyOffset) {
    switch (key) {
        case TopLevelKey::kVersion:
            document_->info.version = ReadString(words::kVersion);
            break;
        case TopLevelKey::kCreator:
            document_->info.creator = ReadString(words::kCreator);
            break;
        case TopLevelKey::kDataOutline:
            ReadDataOutline();
            break;
        case TopLevelKey::kDataDynamicSamples:
            ReadDataDynamicSamples(keyOffset);
            break;
        default:
            ReadVersionProperty(key, keyOffset);
    }
}

std::string ZT_VkjsonParser::ReadString(std::string_view key) {
    RawString string;
    if (!cursor_.TakeString(string)) Raise({kInvalidPropertyValueMissingQuotes, Detail(cursor_.Offset())}, key);
    return string.Decoded();
}

bool ZT_VkjsonParser::ReadBoolean(std::string_view key) {
    if (cursor_.SkipWord("true")) return true;
    if (cursor_.SkipWord("false")) return false;
    if (cursor_.IsCutWord("true") || cursor_.IsCutWord("false")) RaiseEnd(key);
    Raise({kInvalidPropertyType, Detail(cursor_.Offset())}, key, Quoted("JSON Boolean"));
}

ZT_VkjsonParser::TopLevelValue ZT_VkjsonParser::ReadValue(std::string_view key, JsonType type) {
    const std::size_t offset = cursor_.Offset();
    RequireOpening(key, type);
    return {zentor::ReadValue(cursor_, key), ValueChecks(cursor_.Bytes(), offset, key)};
}

void ZT_VkjsonParser::RequireOpening(std::string_view key, JsonType type) const {
    if (cursor_.AtEnd()) RaiseEnd(key);
    const bool isObject = type == JsonType::kObject;
    if (cursor_.Peek() == (isObject ? '{' : '[')) return;
    Raise({kInvalidPropertyType, Detail(cursor_.Offset())}, key, Quoted(isObject ? "JSON Object" : "JSON Array"));
}

void ZT_VkjsonParser::RaiseEnd(std::string_view key) const {
    Raise({kInvalidJson, Detail(cursor_.Bytes().size())}, Quoted(key));
}

void ZT_VkjsonParser::ReadDataOutline() {
    RequireOpening(words::kDataOutline, JsonType::kArray);
    std::size_t offset = cursor_.Offset();
    auto plain = HasPlainOutlines() ? ScanOutline(cursor_.Bytes(), offset, passed_) : std::nullopt;
    outline_ = plain ? std::move(*plain) : CheckOutline(cursor_.Bytes(), offset, Validator(), passed_);
    cursor_.MoveTo(offset);
}

void ZT_VkjsonParser::ReadDataDynamicSamples(std::size_t keyOffset) {
    CheckBeforeSamples(keyOffset);
    RequireOpening(words::kDataDynamicSamples, JsonType::kArray);
    cursor_.MoveTo(document_->samples.TakeSamples(cursor_.Bytes(), cursor_.Offset(), gallop_));
}

void ZT_VkjsonParser::CheckMandatoryProperties(std::size_t endOffset) const {
    std::string missing;
    AddMissing(missing);
    if (!missing.empty()) Raise({kMissingRequiredProperties, Detail(endOffset)}, missing);
}

void ZT_VkjsonParser::AddIfMissing(TopLevelKey key, std::string& names) const {
    if (Has(key)) return;
    if (!names.empty()) names += ", ";
    names += NameOf(key);
}

void ZT_VkjsonParser::RefuseKey(TopLevelKey key, std::size_t keyOffset) {
    // Both versions name the newer one.
    Raise({kInvalidTopLevelProperty, Detail(keyOffset)}, Quoted(NameOf(key)), "2.0.0");
}

void ZT_VkjsonParser::RaiseInvalidInfo(std::string_view key, std::string_view other, bool value, std::int64_t offset) {
    Raise({kInvalidInfo, offset}, key, other, value ? "true" : "false");
}

void ZT_VkjsonParser::KeepUtcInfo(ValueChecks& checks, const JsonValue& info) {
    Validator().UtcInfo(checks, info);
    ZT_FileInfo& kept = document_->info;
    kept.timeMode = ZT_TIME_MODE_UTC;
    kept.precisionLength = static_cast<std::uint64_t>(FindMember(info, words::kPrecisionLength)->GetDouble());
    kept.isGmt = FindMember(info, words::kIsGmt)->GetBool();
    document_->timeForm = TimeForm(TimeForm::Utc{kept.precisionLength, kept.isGmt});
}

void ZT_VkjsonParser::KeepTimecodeInfo(ValueChecks& checks, const JsonValue& info) {
    Validator().TimecodeInfo(checks, info);
    const JsonValue& frameRate = *FindMember(info, words::kFrameRate);
    const double value = FindMember(frameRate, words::kValue)->GetDouble();
    const double scale = FindMember(frameRate, words::kScale)->GetDouble();
    ZT_FileInfo& kept = document_->info;
    kept.timeMode = ZT_TIME_MODE_TIMECODE;
    kept.framesPerSecond = value / scale;
    kept.dropFrame = FindMember(info, words::kDropFrame)->GetBool();
    const std::uint32_t wholeValue = WholeOrZero(value);
    const std::uint32_t wholeScale = WholeOrZero(scale);
    if (wholeValue == 0 || wholeScale == 0) {
        document_->timeForm = TimeForm(FrameRateNear(kept.framesPerSecond, kept.dropFrame));
        return;
    }
    document_->timeForm = TimeForm(FrameRate{wholeValue, wholeScale, kept.dropFrame});
    kept.frameRateValue = wholeValue;
    kept.frameRateScale = wholeScale;
}

void ZT_VkjsonParser::KeepVideoSyncTimeList(ValueChecks& checks, const JsonValue& list) {
    Validator().VideoSyncTimeList(checks, list);
    for (const JsonValue& entry : list.GetArray()) {
        ZT_VideoSyncTime kept{std::string(TextOf(*FindMember(entry, words::kFileName))), std::uint64_t{0}};
        if (const JsonValue* const time = FindMember(entry, words::kTimeString)) {
            kept.at = std::string(TextOf(*time));
        } else {
            kept.at = static_cast<std::uint64_t>(FindMember(entry, words::kFrameNumber)->GetDouble());
        }
        document_->videoSync.entries.push_back(std::move(kept));
    }
}

}  // namespace zentor
