#include "reader/sensor_file_handler.h"

#include <string_view>

#include "errors/host_boundary.h"
#include "errors/raise.h"
#include "reader/client_forms.h"
#include "reader/data_path.h"
#include "reader/node_records.h"
#include "reader/schema_words.h"

namespace zentor {

namespace {

// The caller's record, emptied.
template <class Record>
Record& Emptied(Record* record, const char* typeName) {
    if (record == nullptr) Raise(kInvalidPointer, Quoted(typeName));
    *record = Record();
    return *record;
}

ZT_DataPath PathFrom(const char* dataPath) {
    if (dataPath == nullptr) Raise(kInvalidPointer, Quoted("ZT_DataPath"));
    return ParseDataPath(dataPath);
}

void CheckScale(ZT_Time time, const char* name) {
    if (time.scale == 0) Raise(kZeroScaleValue, name);
}

// Calls `take` with the path of each child, which is one object that changes.
template <class Take>
void ForEachChild(const Outline& outline, ZT_DataPath parent, Take&& take) {
    const JsonValue& children = outline.ChildrenOf(outline.FindNode(parent));
    parent.items.emplace_back();
    ZT_DataPathItem& item = parent.items.back();
    for (JsonSize i = 0; i < children.Size(); ++i) {
        item.matchName = TextOf(*FindMember(children[i], words::kMatchName));
        item.index = i;
        take(parent, children.Size());
    }
}

void FillChildren(const Outline& outline, ZT_DataPath parent, ZT_GroupChildren& children) {
    ZT_GroupChildren filled;
    ForEachChild(outline, std::move(parent), [&](const ZT_DataPath& path, JsonSize count) {
        if (filled.paths.empty()) filled.paths.reserve(count);
        filled.paths.push_back(path);
    });
    children = std::move(filled);
}

void HandOverChildren(const Outline& outline, const char* dataPath, void* handle) {
    const HostTables tables = RequireHostTables();
    ForEachChild(outline, PathFrom(dataPath),
                 [&](const ZT_DataPath& path, JsonSize count) { HandOver(tables, handle, path, count); });
}

constexpr const char* kRootPath = "[\"dataOutline\"]";

}  // namespace

SensorFileHandlerImpl::SensorFileHandlerImpl(std::string inputPath, std::shared_ptr<const DocumentRecord> record)
    : inputPath_(std::move(inputPath)),
      record_(std::move(record)),
      bytes_(record_->documentPath),
      document_(
          ParseDocument(bytes_.bytes(), record_->isKnownVersion2 ? ParserChoice::kVersion2 : ParserChoice::kProbe)) {}

const JsonValue* SensorFileHandlerImpl::FindNode(const char* dataPath) const {
    return document_->outline.FindNode(PathFrom(dataPath));
}

ZT_DynamicDataInfo SensorFileHandlerImpl::DynamicDataInfoAt(const char* dataPath) const {
    ZT_DynamicDataInfo info = DynamicDataInfoOf(FindNode(dataPath));
    if (!document_->timeForm) return info;
    auto span = document_->samples.FindTimeSpan(bytes_.bytes(), info.sampleSetID, *document_->timeForm);
    if (!span) return info;
    info.firstSampleTime = std::move(span->first);
    info.lastSampleTime = std::move(span->last);
    return info;
}

template <class Find>
SampleRange SensorFileHandlerImpl::FindSamples(const char* dataPath, Find&& find) const {
    bytes_.CheckLength();
    const std::string_view id = TextOf(*FindMember(RequireDynamicNode(FindNode(dataPath)), words::kSampleSetId));
    if (!document_->timeForm) Raise(kSamplesNotFound, Excerpt(id));
    const SampleRange samples = find(id, *document_->timeForm);
    if (samples.Count() == 0) Raise(kFetchDynamicSampleFailure, Quoted(dataPath));
    return samples;
}

SampleRange SensorFileHandlerImpl::FindSamplesBetween(const char* dataPath, ZT_Time start, ZT_Time end) const {
    CheckScale(start, "startTime");
    CheckScale(end, "endTime");
    return FindSamples(dataPath, [&](std::string_view id, const TimeForm& form) {
        return document_->samples.FindRange(bytes_.bytes(), id, form, start, end);
    });
}

SampleRange SensorFileHandlerImpl::FindSampleAt(const char* dataPath, ZT_Time time) const {
    CheckScale(time, "time");
    return FindSamples(dataPath, [&](std::string_view id, const TimeForm& form) {
        return document_->samples.FindLatest(bytes_.bytes(), id, form, time);
    });
}

ZT_Result SensorFileHandlerImpl::GetRootChildren(ZT_GroupChildren* children) noexcept {
    return GetGroupChildren(kRootPath, children);
}

ZT_Result SensorFileHandlerImpl::GetGroupChildren(const char* dataPath, ZT_GroupChildren* children) noexcept {
    return RunOperation(this, [&] {
        ZT_GroupChildren& record = Emptied(children, "ZT_GroupChildren");
        bytes_.CheckLength();
        FillChildren(document_->outline, PathFrom(dataPath), record);
    });
}

ZT_Result SensorFileHandlerImpl::GetGroupChildInfo(const char* dataPath, ZT_GroupChildInfo* info) noexcept {
    return RunOperation(this, [&] {
        ZT_GroupChildInfo& record = Emptied(info, "ZT_GroupChildInfo");
        bytes_.CheckLength();
        record = GroupChildInfoOf(FindNode(dataPath));
    });
}

ZT_Result SensorFileHandlerImpl::GetStaticDataInfo(const char* dataPath, ZT_StaticDataInfo* info) noexcept {
    return RunOperation(this, [&] {
        ZT_StaticDataInfo& record = Emptied(info, "ZT_StaticDataInfo");
        bytes_.CheckLength();
        record = StaticDataInfoOf(FindNode(dataPath));
    });
}

ZT_Result SensorFileHandlerImpl::GetDynamicDataInfo(const char* dataPath, ZT_DynamicDataInfo* info) noexcept {
    return RunOperation(this, [&] {
        ZT_DynamicDataInfo& record = Emptied(info, "ZT_DynamicDataInfo");
        bytes_.CheckLength();
        record = DynamicDataInfoAt(dataPath);
    });
}

ZT_Result SensorFileHandlerImpl::GetDynamicSamples(const char* dataPath, ZT_Time start, ZT_Time end,
                                                   DynamicDataSampleSet* samples) noexcept {
    return RunOperation(this, [&] {
        DynamicDataSampleSet& record = Emptied(samples, "DynamicDataSampleSet");
        record.samples = FindSamplesBetween(dataPath, start, end).ReadAll();
    });
}

ZT_Result SensorFileHandlerImpl::GetDynamicSample(const char* dataPath, ZT_Time time,
                                                  DynamicDataSampleSet* samples) noexcept {
    return RunOperation(this, [&] {
        DynamicDataSampleSet& record = Emptied(samples, "DynamicDataSampleSet");
        record.samples = FindSampleAt(dataPath, time).ReadAll();
    });
}

ZT_Result SensorFileHandlerImpl::GetFileInfo(ZT_FileInfo* info) noexcept {
    return RunOperation(this, [&] { Emptied(info, "ZT_FileInfo") = document_->info; });
}

ZT_Result SensorFileHandlerImpl::GetVideoSyncTimeList(ZT_VideoSyncTimeList* list) noexcept {
    return RunOperation(this, [&] { Emptied(list, "ZT_VideoSyncTimeList") = document_->videoSync; });
}

ZT_Result SensorFileHandlerImpl::GetRootChildrenClient(void* handle) noexcept {
    return GetGroupChildrenClient(kRootPath, handle);
}

ZT_Result SensorFileHandlerImpl::GetGroupChildrenClient(const char* dataPath, void* handle) noexcept {
    return RunOperation(this, [&] {
        bytes_.CheckLength();
        HandOverChildren(document_->outline, dataPath, handle);
    });
}

ZT_Result SensorFileHandlerImpl::GetGroupChildInfoClient(const char* dataPath, void* handle) noexcept {
    return RunOperation(this, [&] {
        const HostTables tables = RequireHostTables();
        bytes_.CheckLength();
        HandOver(tables, handle, GroupChildInfoOf(FindNode(dataPath)));
    });
}

ZT_Result SensorFileHandlerImpl::GetStaticDataInfoClient(const char* dataPath, void* handle) noexcept {
    return RunOperation(this, [&] {
        const HostTables tables = RequireHostTables();
        bytes_.CheckLength();
        HandOver(tables, handle, StaticDataInfoOf(FindNode(dataPath)));
    });
}

ZT_Result SensorFileHandlerImpl::GetDynamicDataInfoClient(const char* dataPath, void* handle) noexcept {
    return RunOperation(this, [&] {
        const HostTables tables = RequireHostTables();
        bytes_.CheckLength();
        HandOver(tables, handle, DynamicDataInfoAt(dataPath));
    });
}

ZT_Result SensorFileHandlerImpl::GetDynamicSamplesClient(const char* dataPath, ZT_Time start, ZT_Time end,
                                                         void* handle) noexcept {
    return RunOperation(this, [&] {
        const HostTables tables = RequireHostTables();
        HandOver(tables, handle, FindSamplesBetween(dataPath, start, end));
    });
}

ZT_Result SensorFileHandlerImpl::GetDynamicSampleClient(const char* dataPath, ZT_Time time, void* handle) noexcept {
    return RunOperation(this, [&] {
        const HostTables tables = RequireHostTables();
        HandOver(tables, handle, FindSampleAt(dataPath, time));
    });
}

ZT_Result SensorFileHandlerImpl::GetFileInfoClient(void* handle) noexcept {
    return RunOperation(this, [&] { HandOver(RequireHostTables(), handle, document_->info); });
}

ZT_Result SensorFileHandlerImpl::GetVideoSyncTimeListClient(void* handle) noexcept {
    return RunOperation(this, [&] { HandOver(RequireHostTables(), handle, document_->videoSync); });
}

}  // namespace zentor
