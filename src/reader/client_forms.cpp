#include "reader/client_forms.h"

#include "errors/host_tables.h"
#include "errors/raise.h"
#include "format/words.h"

namespace zentor {

namespace {

constexpr std::uint32_t kLinear = 1;
constexpr std::uint32_t kHold = 2;

std::uint8_t Flag(bool value) { return value ? 1 : 0; }

void HandOverType(const HostTables& tables, void* handle, const ZT_DataType& type) {
    const ZT_DataTypeCallbacks& to = tables.dataTypes;
    CallHost(to.setType, handle, type.type.data(), type.type.size());
    if (type.type == words::kString || type.type == words::kPaddedString) {
        CallHost(to.setStringProperties, handle, type.maxLen, type.maxDigitsInStrLength, Flag(type.eventMarkerB));
    }
    if (type.ranges.empty()) return;  // neither a number nor an array
    CallHost(to.setPattern, handle, Flag(type.pattern.isSigned), type.pattern.digitsInteger,
             type.pattern.digitsDecimal);
    for (std::size_t i = 0; i < type.ranges.size(); ++i) {
        const ZT_NumberRange& range = type.ranges[i];
        CallHost(to.setRange, handle, i, range.occurringMin, range.occurringMax, range.legalMin, range.legalMax);
    }
    if (type.type == words::kNumber || type.type == words::kNumberString) return;
    CallHost(to.setArrayProperties, handle, type.arraySize, Flag(type.isPoint));
    for (std::size_t i = 0; i < type.arrayDisplayNames.size(); ++i) {
        const std::string& name = type.arrayDisplayNames[i];
        CallHost(to.addArrayDisplayName, handle, i, name.data(), name.size());
    }
}

class ValueHandOver : public boost::static_visitor<> {
public:
    ValueHandOver(const HostTables& tables, void* handle) : to_(tables.staticData), handle_(handle) {}

    void operator()(double number) const { CallHost(to_.setNumber, handle_, number); }
    void operator()(bool flag) const { CallHost(to_.setBoolean, handle_, Flag(flag)); }
    void operator()(const std::string& text) const { CallHost(to_.setString, handle_, text.data(), text.size()); }
    void operator()(const std::vector<double>& numbers) const {
        CallHost(to_.setNumberArray, handle_, numbers.data(), numbers.size());
    }

private:
    const ZT_StaticDataCallbacks& to_;
    void* handle_;
};

class SampleHandOver : public boost::static_visitor<> {
public:
    SampleHandOver(const HostTables& tables, void* handle, std::string_view time)
        : to_(tables.samples), handle_(handle), time_(time) {}

    void operator()(double number) const { CallHost(to_.addNumber, handle_, time_.data(), time_.size(), number); }
    void operator()(const std::string& text) const {
        CallHost(to_.addString, handle_, time_.data(), time_.size(), text.data(), text.size());
    }
    void operator()(const std::vector<double>& numbers) const {
        CallHost(to_.addNumberArray, handle_, time_.data(), time_.size(), numbers.data(), numbers.size());
    }

private:
    const ZT_SampleCallbacks& to_;
    void* handle_;
    std::string_view time_;
};

}  // namespace

HostTables RequireHostTables() {
    if (HostSuite() == nullptr) Raise(kClientApisNotSet);
    return ReadHostTables();
}

void HandOver(const HostTables& tables, void* handle, const ZT_DataPath& path, std::uint64_t childCount) {
    for (const ZT_DataPathItem& item : path.items) {
        const bool isLast = &item == &path.items.back();
        CallHost(tables.dataPaths.addPathItem, handle, item.matchName.c_str(), item.index, childCount, Flag(isLast));
    }
}

void HandOver(const HostTables& tables, void* handle, const ZT_GroupChildInfo& info) {
    CallHost(tables.nodeInfo.setNodeInfo, handle, info.nodeType, info.displayName.data(), info.displayName.size(),
             info.matchName.data(), info.matchName.size());
}

void HandOver(const HostTables& tables, void* handle, const ZT_StaticDataInfo& info) {
    CallHost(tables.staticData.setNames, handle, info.displayName.data(), info.displayName.size(),
             info.matchName.data(), info.matchName.size());
    HandOverType(tables, handle, info.dataType);
    boost::apply_visitor(ValueHandOver(tables, handle), info.value);
}

void HandOver(const HostTables& tables, void* handle, const ZT_DynamicDataInfo& info) {
    const ZT_DynamicDataCallbacks& to = tables.dynamicData;
    CallHost(to.setNames, handle, info.displayName.data(), info.displayName.size(), info.matchName.data(),
             info.matchName.size());
    CallHost(to.setSampleInfo, handle, info.sampleSetID.data(), info.sampleSetID.size(),
             info.interpolation == words::kLinear ? kLinear : kHold, Flag(info.hasExpectedFrequencyB), info.sampleCount,
             info.expectedMaxInterSampleDuration.data(), info.expectedMaxInterSampleDuration.size());
    HandOverType(tables, handle, info.dataType);
    if (info.firstSampleTime.empty()) return;
    CallHost(to.setTimeSpan, handle, info.firstSampleTime.data(), info.firstSampleTime.size(),
             info.lastSampleTime.data(), info.lastSampleTime.size());
}

void HandOver(const HostTables& tables, void* handle, SampleRange samples) {
    ZT_Sample sample;
    for (std::uint64_t i = 0; i < samples.Count(); ++i) samples.Read(i, sample);
    for (std::uint64_t i = 0; i < samples.Count(); ++i) {
        samples.Read(i, sample);
        boost::apply_visitor(SampleHandOver(tables, handle, sample.time), sample.value);
    }
}

void HandOver(const HostTables& tables, void* handle, const ZT_FileInfo& info) {
    CallHost(tables.fileInfo.setFileInfo, handle, info.frameRateValue, info.frameRateScale, info.version.data(),
             info.version.size(), info.creator.data(), info.creator.size());
    CallHost(tables.fileInfo.setTimeMode, handle, info.timeMode, info.framesPerSecond, Flag(info.dropFrame),
             info.precisionLength, Flag(info.isGmt));
}

void HandOver(const HostTables& tables, void* handle, const ZT_VideoSyncTimeList& list) {
    for (const ZT_VideoSyncTime& entry : list.entries) {
        if (const auto* const time = boost::get<std::string>(&entry.at)) {
            CallHost(tables.videoSync.addTime, handle, entry.fileName.data(), entry.fileName.size(), time->data(),
                     time->size());
        } else {
            CallHost(tables.videoSync.addFrame, handle, entry.fileName.data(), entry.fileName.size(),
                     boost::get<std::uint64_t>(entry.at));
        }
    }
}

}  // namespace zentor
