#include "errors/raise.h"
#include "format/words.h"
#include "reader/parser_versions.h"

namespace zentor {

const ZT_VkjsonValidator& ZT_VkjsonParser_v1::Validator() const {
    static const ZT_VkjsonValidator_v1 validator;
    return validator;
}

void ZT_VkjsonParser_v1::ReadVersionProperty(TopLevelKey key, std::size_t keyOffset) {
    switch (key) {
        case TopLevelKey::kUseTimecode:
            useTimecode_ = ReadBoolean(words::kUseTimecode);
            if (Has(TopLevelKey::kUtcInfo)) CheckTimeMode(TopLevelKey::kUtcInfo, OffsetOf(TopLevelKey::kUtcInfo));
            if (Has(TopLevelKey::kTimecodeInfo)) {
                CheckTimeMode(TopLevelKey::kTimecodeInfo, OffsetOf(TopLevelKey::kTimecodeInfo));
            }
            break;
        case TopLevelKey::kUtcInfo: {
            if (Has(TopLevelKey::kUseTimecode)) CheckTimeMode(key, keyOffset);
            TopLevelValue info = ReadValue(words::kUtcInfo, JsonType::kObject);
            KeepUtcInfo(info.checks, info.value);
            break;
        }
        case TopLevelKey::kTimecodeInfo: {
            if (Has(TopLevelKey::kUseTimecode)) CheckTimeMode(key, keyOffset);
            TopLevelValue info = ReadValue(words::kTimecodeInfo, JsonType::kObject);
            KeepTimecodeInfo(info.checks, info.value);
            break;
        }
        case TopLevelKey::kVideoSyncTimeList: {
            TopLevelValue list = ReadValue(words::kVideoSyncTimeList, JsonType::kArray);
            KeepVideoSyncTimeList(list.checks, list.value);
            break;
        }
        default:
            RefuseKey(key, keyOffset);
    }
}

void ZT_VkjsonParser_v1::CheckTimeMode(TopLevelKey key, std::size_t keyOffset) const {
    const bool wanted = key == TopLevelKey::kTimecodeInfo;
    if (useTimecode_ == wanted) return;
    RaiseInvalidInfo(NameOf(key), words::kUseTimecode, wanted, static_cast<std::int64_t>(keyOffset));
}

void ZT_VkjsonParser_v1::AddMissing(std::string& names) const {
    AddIfMissing(TopLevelKey::kUseTimecode, names);
    if (Has(TopLevelKey::kUseTimecode)) {
        AddIfMissing(useTimecode_ ? TopLevelKey::kTimecodeInfo : TopLevelKey::kUtcInfo, names);
    }
    AddIfMissing(TopLevelKey::kDataOutline, names);
}

}  // namespace zentor
