#include <utility>

#include "errors/raise.h"
#include "format/words.h"
#include "reader/parser_versions.h"

namespace zentor {

namespace {

void RequireBefore(bool isBefore, std::string_view first, TopLevelKey key, std::size_t keyOffset) {
    if (!isBefore) Raise({kDependentPropertyNotFound, static_cast<std::int64_t>(keyOffset)}, first, NameOf(key));
}

}  // namespace

const ZT_VkjsonValidator& ZT_VkjsonParser_v2::Validator() const {
    static const ZT_VkjsonValidator_v2 validator;
    return validator;
}

void ZT_VkjsonParser_v2::ReadVersionProperty(TopLevelKey key, std::size_t keyOffset) {
    if (key == TopLevelKey::kDynamicSamplesPresent) {
        samplesPresent_ = ReadBoolean(words::kDynamicSamplesPresent);
    } else if (key == TopLevelKey::kDynamicDataInfo) {
        CheckSamplesPresent(key, keyOffset);
        ReadDynamicDataInfo();
    } else {
        RefuseKey(key, keyOffset);
    }
}

void ZT_VkjsonParser_v2::CheckSamplesPresent(TopLevelKey key, std::size_t keyOffset) const {
    RequireBefore(Has(TopLevelKey::kDynamicSamplesPresent), words::kDynamicSamplesPresent, key, keyOffset);
    if (samplesPresent_) return;
    RaiseInvalidInfo(NameOf(key), words::kDynamicSamplesPresent, true, static_cast<std::int64_t>(keyOffset));
}

void ZT_VkjsonParser_v2::CheckBeforeSamples(std::size_t keyOffset) const {
    constexpr TopLevelKey kKey = TopLevelKey::kDataDynamicSamples;
    CheckSamplesPresent(kKey, keyOffset);
    RequireBefore(Has(TopLevelKey::kDynamicDataInfo), words::kDynamicDataInfo, kKey, keyOffset);
}

void ZT_VkjsonParser_v2::ReadDynamicDataInfo() {
    TopLevelValue read = ReadValue(words::kDynamicDataInfo, JsonType::kObject);
    const JsonValue& info = read.value;
    ValueChecks& checks = read.checks;
    const std::string_view first = info.ObjectEmpty() ? std::string_view("") : TextOf(info.MemberBegin()->name);
    if (first != words::kUseTimecode) {
        Raise({kTopPropertyNotTimeInfo, checks.OffsetOf(first)}, words::kDynamicDataInfo, words::kUseTimecode,
              Excerpt(first));
    }
    const bool useTimecode = checks.Require(info, words::kUseTimecode, JsonType::kBoolean).GetBool();
    std::string_view wanted = words::kTimecodeInfo;
    std::string_view refused = words::kUtcInfo;
    if (!useTimecode) std::swap(wanted, refused);
    if (FindMember(info, refused) != nullptr) {
        RaiseInvalidInfo(refused, words::kUseTimecode, !useTimecode, checks.OffsetOf(refused));
    }
    const JsonValue& timeInfo = checks.Require(info, wanted, JsonType::kObject);
    {
        const auto into = checks.Into(wanted);
        if (useTimecode) {
            KeepTimecodeInfo(checks, timeInfo);
        } else {
            KeepUtcInfo(checks, timeInfo);
        }
    }
    if (const JsonValue* const list = checks.Allow(info, words::kVideoSyncTimeList, JsonType::kArray)) {
        const auto into = checks.Into(words::kVideoSyncTimeList);
        KeepVideoSyncTimeList(checks, *list);
    }
}

void ZT_VkjsonParser_v2::AddMissing(std::string& names) const {
    AddIfMissing(TopLevelKey::kVersion, names);
    AddIfMissing(TopLevelKey::kDataOutline, names);
    AddIfMissing(TopLevelKey::kDynamicSamplesPresent, names);
    if (samplesPresent_) AddIfMissing(TopLevelKey::kDynamicDataInfo, names);
}

}  // namespace zentor
