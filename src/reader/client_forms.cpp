#include "reader/client_forms.h"

#include "errors/host_suite.h"
#include "errors/raise.h"
#include "reader/schema_words.h"

namespace zentor {

namespace {

constexpr std::uint32_t kLinear = 1;
constexpr std::uint32_t kHold = 2;

// Calls an entry of a group of callbacks; a group or an entry that the host has left out is skipped.
template <class Group, class Entry, class... Arguments>
void Call(const Group* group, Entry Group::*entry, Arguments... arguments) {
    if (group != nullptr) CallHost(group->*entry, arguments...);
}

std::uint8_t Flag(bool value) { return value ? 1 : 0; }

void HandOverType(const ZT_HostSuite& suite, void* handle, const ZT_DataType& type) {
    const ZT_DataTypeCallbacks* const to = suite.dataTypes;
    Call(to, &ZT_DataTypeCallbacks::setType, handle, type.type.data(), type.type.size());
    if (type.type == words::kString || type.type == words::kPaddedString) {
        Call(to, &ZT_DataTypeCallbacks::setStringProperties, handle, type.maxLen, type.maxDigitsInStrLength,
             Flag(type.eventMarkerB));
    }
    if (type.ranges.empty()) return;  // neither a number nor an array
    Call(to, &ZT_DataTypeCallbacks::setPattern, handle, Flag(type.pattern.isSigned), type.pattern.digitsInteger,
         type.pattern.digitsDecimal);
    for (std::size_t i = 0; i < type.ranges.size(); ++i) {
        const ZT_NumberRange& range = type.ranges[i];
        Call(to, &ZT_DataTypeCallbacks::setRange, handle, i, range.occurringMin, range.occurringMax, range.legalMin,
             range.legalMax);
    }
    if (type.type == words::kNumber || type.type == words::kNumberString) return;
    Call(to, &ZT_DataTypeCallbacks::setArrayProperties, handle, type.arraySize, Flag(type.isPoint));
    for (std::size_t i = 0; i < type.arrayDisplayNames.size(); ++i) {
        const std::string& name = type.arrayDisplayNames[i];
        Call(to, &ZT_DataTypeCallbacks::addArrayDisplayName, handle, i, name.data(), name.size());
    }
}

class ValueHandOver : public boost::static_visitor<> {
public:
    ValueHandOver(const ZT_HostSuite& suite, void* handle) : to_(suite.staticData), handle_(handle) {}

    void operator()(double number) const { Call(to_, &ZT_StaticDataCallbacks::setNumber, handle_, number); }
    void operator()(bool flag) const { Call(to_, &ZT_StaticDataCallbacks::setBoolean, handle_, Flag(flag)); }
    void operator()(const std::string& text) const {
        Call(to_, &ZT_StaticDataCallbacks::setString, handle_, text.data(), text.size());
    }
    void operator()(const std::vector<double>& numbers) const {
        Call(to_, &ZT_StaticDataCallbacks::setNumberArray, handle_, numbers.data(), numbers.size());
    }

private:
    const ZT_StaticDataCallbacks* to_;
    void* handle_;
};

class SampleHandOver : public boost::static_visitor<> {
public:
    SampleHandOver(const ZT_HostSuite& suite, void* handle, std::string_view time)
        : to_(suite.samples), handle_(handle), time_(time) {}

    void operator()(double number) const {
        Call(to_, &ZT_SampleCallbacks::addNumber, handle_, time_.data(), time_.size(), number);
    }
    void operator()(const std::string& text) const {
        Call(to_, &ZT_SampleCallbacks::addString, handle_, time_.data(), time_.size(), text.data(), text.size());
    }
    void operator()(const std::vector<double>& numbers) const {
        Call(to_, &ZT_SampleCallbacks::addNumberArray, handle_, time_.data(), time_.size(), numbers.data(),
             numbers.size());
    }

private:
    const ZT_SampleCallbacks* to_;
    void* handle_;
    std::string_view time_;
};

}  // namespace

const ZT_HostSuite& RequireHostSuite() {
    const ZT_HostSuite* const suite = HostSuite();
    if (suite == nullptr) Raise(kClientApisNotSet);
    return *suite;
}

void HandOver(const ZT_HostSuite& suite, void* handle, const ZT_DataPath& path, std::uint64_t childCount) {
    for (const ZT_DataPathItem& item : path.items) {
        const bool isLast = &item == &path.items.back();
        Call(suite.dataPaths, &ZT_DataPathCallbacks::addPathItem, handle, item.matchName.c_str(), item.index,
             childCount, Flag(isLast));
    }
}

void HandOver(const ZT_HostSuite& suite, void* handle, const ZT_GroupChildInfo& info) {
    Call(suite.nodeInfo, &ZT_NodeInfoCallbacks::setNodeInfo, handle, info.nodeType, info.displayName.data(),
         info.displayName.size(), info.matchName.data(), info.matchName.size());
}

void HandOver(const ZT_HostSuite& suite, void* handle, const ZT_StaticDataInfo& info) {
    Call(suite.staticData, &ZT_StaticDataCallbacks::setNames, handle, info.displayName.data(), info.displayName.size(),
         info.matchName.data(), info.matchName.size());
    HandOverType(suite, handle, info.dataType);
    boost::apply_visitor(ValueHandOver(suite, handle), info.value);
}

void HandOver(const ZT_HostSuite& suite, void* handle, const ZT_DynamicDataInfo& info) {
    const ZT_DynamicDataCallbacks* const to = suite.dynamicData;
    Call(to, &ZT_DynamicDataCallbacks::setNames, handle, info.displayName.data(), info.displayName.size(),
         info.matchName.data(), info.matchName.size());
    Call(to, &ZT_DynamicDataCallbacks::setSampleInfo, handle, info.sampleSetID.data(), info.sampleSetID.size(),
         info.interpolation == words::kLinear ? kLinear : kHold, Flag(info.hasExpectedFrequencyB), info.sampleCount,
         info.expectedMaxInterSampleDuration.data(), info.expectedMaxInterSampleDuration.size());
    HandOverType(suite, handle, info.dataType);
    if (info.firstSampleTime.empty()) return;
    Call(to, &ZT_DynamicDataCallbacks::setTimeSpan, handle, info.firstSampleTime.data(), info.firstSampleTime.size(),
         info.lastSampleTime.data(), info.lastSampleTime.size());
}

void HandOver(const ZT_HostSuite& suite, void* handle, const SampleRange& samples) {
    ZT_Sample sample;
    for (std::uint64_t i = 0; i < samples.Count(); ++i) samples.Read(i, sample);
    for (std::uint64_t i = 0; i < samples.Count(); ++i) {
        samples.Read(i, sample);
        boost::apply_visitor(SampleHandOver(suite, handle, sample.time), sample.value);
    }
}

void HandOver(const ZT_HostSuite& suite, void* handle, const ZT_FileInfo& info) {
    Call(suite.fileInfo, &ZT_FileInfoCallbacks::setFileInfo, handle, info.frameRateValue, info.frameRateScale,
         info.version.data(), info.version.size(), info.creator.data(), info.creator.size());
    Call(suite.fileInfo, &ZT_FileInfoCallbacks::setTimeMode, handle, info.timeMode, info.framesPerSecond,
         Flag(info.dropFrame), info.precisionLength, Flag(info.isGmt));
}

void HandOver(const ZT_HostSuite& suite, void* handle, const ZT_VideoSyncTimeList& list) {
    for (const ZT_VideoSyncTime& entry : list.entries) {
        if (const auto* const time = boost::get<std::string>(&entry.at)) {
            Call(suite.videoSync, &ZT_VideoSyncCallbacks::addTime, handle, entry.fileName.data(), entry.fileName.size(),
                 time->data(), time->size());
        } else {
            Call(suite.videoSync, &ZT_VideoSyncCallbacks::addFrame, handle, entry.fileName.data(),
                 entry.fileName.size(), boost::get<std::uint64_t>(entry.at));
        }
    }
}

}  // namespace zentor
