// Reads a document: the top level key by key, the outline and the time information into values, the samples only as far
// as their end.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

#include "util/json_cursor.h"
#include "reader/value_checks.h"
#include "reader/vkjson_document.h"

namespace zentor {

enum class ParserChoice : std::uint32_t { kVersion1 = 0, kVersion2 = 1, kProbe = 2 };

// Reads the document in `bytes`, which must outlive it. Every fault of the document is a ZT_Exception with its byte
// offset as first detail: codes 28 to 32, 37, 39 to 44, 46, 47, 49; and 14, 15, 21 for the copy of the samples.
std::unique_ptr<VkjsonDocument> ParseDocument(std::string_view bytes, ParserChoice choice);

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
    ZT_VkjsonParser(std::string_view bytes, VkjsonDocument& document) : cursor_(bytes), document_(document) {}
    virtual ~ZT_VkjsonParser() = default;
    ZT_VkjsonParser(const ZT_VkjsonParser&) = delete;
    ZT_VkjsonParser& operator=(const ZT_VkjsonParser&) = delete;

    void Parse();

protected:
    // A value together with the checks that stand at it.
    struct TopLevelValue {
        JsonDocument value;
        ValueChecks checks;
    };

    virtual const ZT_VkjsonValidator& Validator() const = 0;
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
    // Code 46: `key` may be there exactly when `other` is `value`.
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
    void RegisterDynamicNodes(ValueChecks& checks, const JsonValue& nodes);
    void ReadDataDynamicSamples(std::size_t keyOffset);
    void CheckMandatoryProperties(std::size_t endOffset) const;

    JsonCursor cursor_;
    VkjsonDocument& document_;
    std::array<std::optional<std::size_t>, kTopLevelKeys> offsets_;  // of the keys that have been read
};

std::string_view NameOf(TopLevelKey key);

}  // namespace zentor
