// Reads a document: the top level key by key, the outline into an index, the time information into values, and of the
// samples only as much as finding their end takes.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>

#include "reader/value_checks.h"
#include "reader/vkjson_document.h"
#include "util/json_cursor.h"

namespace zentor {

enum class ParserChoice : std::uint32_t { kVersion1 = 0, kVersion2 = 1, kProbe = 2 };

// Called now and then with the offset up to which a document has been read.
using PassedOffset = std::function<void(std::size_t)>;

// Reads the document in `bytes`. Every fault of the document is a ZT_Exception with its byte offset as first detail:
// ZT_MISSING_PROPERTY to ZT_INVALID_JSON, ZT_DUPLICATE_SAMPLE_ID, ZT_SAMPLE_DATA to ZT_PROPERTY_VALUE,
// ZT_CONDITIONAL_PROPERTY, ZT_EMPTY_ARRAY, ZT_DYNAMIC_NODE_NOT_PRESENT; ZT_OUT_OF_MEMORY.
std::unique_ptr<VkjsonDocument> ParseDocument(
    std::string_view bytes, ParserChoice choice, const PassedOffset& passed = [](std::size_t) {});

// What a document can have at its top.
enum class TopLevelKey {
    kVersion,
    kCreator,
    kUseTimecode,
    kUtcInfo,
    kTimecodeInfo,
    kDataOutline,
    kDataDynamicSamples,
    kVideoSyncTimeList,
    kDynamicSamplesPresent,
    kDynamicDataInfo,
};
inline constexpr std::size_t kTopLevelKeys = 10;

// Parses one document. What the two versions share.
class ZT_VkjsonParser {
public:
    // `gallop`: as of ZT_SampleDataProcessor::TakeSamples.
    ZT_VkjsonParser(std::string_view bytes, bool gallop, const PassedOffset& passed)
        : cursor_(bytes), gallop_(gallop), passed_(passed), document_(std::make_unique<VkjsonDocument>()) {}
    virtual ~ZT_VkjsonParser() = default;
    ZT_VkjsonParser(const ZT_VkjsonParser&) = delete;
    ZT_VkjsonParser& operator=(const ZT_VkjsonParser&) = delete;

    // Once.
    std::unique_ptr<VkjsonDocument> Parse();
    // Whether the end of the samples has been taken from few of them, up to now.
    bool HasGalloped() const { return document_ != nullptr && document_->samples.HasGalloped(); }

protected:
    // A value together with the checks that stand at it.
    struct TopLevelValue {
        JsonDocument value;
        ValueChecks checks;
    };

    // Lives as long as the library.
    virtual const ZT_VkjsonValidator& Validator() const = 0;
    // Whether outlines may be plain ones, as ScanOutline knows them.
    virtual bool HasPlainOutlines() const = 0;
    // Reads the value of a key that the versions treat differently; keyOffset is the key's own.
    virtual void ReadVersionProperty(TopLevelKey key, std::size_t keyOffset) = 0;
    virtual void CheckBeforeSamples(std::size_t) const {}
    // Appends the names of the mandatory properties that are not there.
    virtual void AddMissing(std::string& names) const = 0;

    bool Has(TopLevelKey key) const { return offsets_[static_cast<std::size_t>(key)].has_value(); }
    // Where the key stands; it is there.
    std::size_t OffsetOf(TopLevelKey key) const { return *offsets_[static_cast<std::size_t>(key)]; }
    void AddIfMissing(TopLevelKey key, std::string& names) const;

    [[noreturn]] static void RefuseKey(TopLevelKey key, std::size_t keyOffset);
    // Code ZT_CONDITIONAL_PROPERTY: `key` may be there exactly when `other` is `value`.
    [[noreturn]] static void RaiseInvalidInfo(std::string_view key, std::string_view other, bool value,
                                              std::int64_t offset);

    std::string ReadString(std::string_view key);
    bool ReadBoolean(std::string_view key);
    TopLevelValue ReadValue(std::string_view key, JsonType type);

    // These check their value and keep what it says.
    void KeepUtcInfo(ValueChecks& checks, const JsonValue& info);
    void KeepTimecodeInfo(ValueChecks& checks, const JsonValue& info);
    void KeepVideoSyncTimeList(ValueChecks& checks, const JsonValue& list);

private:
    TopLevelKey ReadProperty();
    void ReadCommonProperty(TopLevelKey key, std::size_t keyOffset);
    void ReadDataOutline();
    void ReadDataDynamicSamples(std::size_t keyOffset);
    void CheckMandatoryProperties(std::size_t endOffset) const;

    void RequireOpening(std::string_view key, JsonType type) const;
    [[noreturn]] void RaiseEnd(std::string_view key) const;

    JsonCursor cursor_;
    bool gallop_;
    const PassedOffset& passed_;
    std::unique_ptr<VkjsonDocument> document_;
    OutlineContents outline_;
    std::array<std::optional<std::size_t>, kTopLevelKeys> offsets_;  // of the keys that have been read
};

std::string_view NameOf(TopLevelKey key);

}  // namespace zentor
