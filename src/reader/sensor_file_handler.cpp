#include "reader/sensor_file_handler.h"

#include <utility>

#include "errors/host_boundary.h"
#include "errors/progress.h"
#include "errors/raise.h"
#include "reader/client_forms.h"
#include "reader/data_path.h"

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

SampleRange RequireSamples(const char* dataPath, SampleRange samples) {
    if (samples.Count() == 0) Raise(kFetchDynamicSampleFailure, Quoted(dataPath));
    return samples;
}

constexpr auto kRootPath = kJoined<"[", kQuoted<words::kDataOutline>, "]">;

}  // namespace

SensorFileHandlerImpl::SensorFileHandlerImpl(std::string inputPath, std::shared_ptr<const DocumentRecord> record,
                                             const ReadOptions& options)
    : inputPath_(std::move(inputPath)),
      record_(std::move(record)),
      bytes_(record_->documentPath, options.privateCopy),
      document_(ParseDocument(bytes_.bytes(), record_->isKnownVersion2 ? ParserChoice::kVersion2 : ParserChoice::kProbe,
                              [this](std::size_t offset) {
                                  bytes_.Pass(offset);
                                  ReportProgress(offset);
                              })),
      queries_(*document_, bytes_) {
    bytes_.EndOpening();
    if (options.checkSamples) queries_.CheckSamples();
}

NodeNumber SensorFileHandlerImpl::FindNode(const char* dataPath) const {
    bytes_.CheckUnchanged();
    return queries_.FindNode(PathFrom(dataPath));
}

SampleRange SensorFileHandlerImpl::SamplesBetween(const char* dataPath, ZT_Time start, ZT_Time end) const {
    CheckScale(start, "startTime");
    CheckScale(end, "endTime");
    return RequireSamples(dataPath, queries_.SamplesBetween(FindNode(dataPath), start, end));
}

SampleRange SensorFileHandlerImpl::SampleAt(const char* dataPath, ZT_Time time) const {
    CheckScale(time, "time");
    return RequireSamples(dataPath, queries_.SampleAt(FindNode(dataPath), time));
}

ZT_Result SensorFileHandlerImpl::GetRootChildren(ZT_GroupChildren* children) noexcept {
    return GetGroupChildren(kRootPath.bytes, children);
}

ZT_Result SensorFileHandlerImpl::GetGroupChildren(const char* dataPath, ZT_GroupChildren* children) noexcept {
    return RunOperation(this, [&] {
        ZT_GroupChildren& record = Emptied(children, "ZT_GroupChildren");
        bytes_.CheckUnchanged();
        ZT_GroupChildren filled;
        queries_.ForEachChild(PathFrom(dataPath), [&](const ZT_DataPath& path, std::uint64_t count) {
            if (filled.paths.empty()) filled.paths.reserve(count);
            filled.paths.push_back(path);
        });
        record = std::move(filled);
    });
}

ZT_Result SensorFileHandlerImpl::GetGroupChildInfo(const char* dataPath, ZT_GroupChildInfo* info) noexcept {
    return RunOperation(this, [&] {
        ZT_GroupChildInfo& record = Emptied(info, "ZT_GroupChildInfo");
        record = queries_.GroupChildInfo(FindNode(dataPath));
    });
}

ZT_Result SensorFileHandlerImpl::GetStaticDataInfo(const char* dataPath, ZT_StaticDataInfo* info) noexcept {
    return RunOperation(this, [&] {
        ZT_StaticDataInfo& record = Emptied(info, "ZT_StaticDataInfo");
        record = queries_.StaticDataInfo(FindNode(dataPath));
    });
}

ZT_Result SensorFileHandlerImpl::GetDynamicDataInfo(const char* dataPath, ZT_DynamicDataInfo* info) noexcept {
    return RunOperation(this, [&] {
        ZT_DynamicDataInfo& record = Emptied(info, "ZT_DynamicDataInfo");
        record = queries_.DynamicDataInfo(FindNode(dataPath));
    });
}

ZT_Result SensorFileHandlerImpl::GetDynamicSamples(const char* dataPath, ZT_Time start, ZT_Time end,
                                                   DynamicDataSampleSet* samples) noexcept {
    return RunOperation(this, [&] {
        DynamicDataSampleSet& record = Emptied(samples, "DynamicDataSampleSet");
        record.samples = SamplesBetween(dataPath, start, end).ReadAll();
    });
}

ZT_Result SensorFileHandlerImpl::GetDynamicSample(const char* dataPath, ZT_Time time,
                                                  DynamicDataSampleSet* samples) noexcept {
    return RunOperation(this, [&] {
        DynamicDataSampleSet& record = Emptied(samples, "DynamicDataSampleSet");
        record.samples = SampleAt(dataPath, time).ReadAll();
    });
}

ZT_Result SensorFileHandlerImpl::GetFileInfo(ZT_FileInfo* info) noexcept {
    return RunOperation(this, [&] {
        ZT_FileInfo& record = Emptied(info, "ZT_FileInfo");
        bytes_.CheckUnchanged();
        record = document_->info;
    });
}

ZT_Result SensorFileHandlerImpl::GetVideoSyncTimeList(ZT_VideoSyncTimeList* list) noexcept {
    return RunOperation(this, [&] {
        ZT_VideoSyncTimeList& record = Emptied(list, "ZT_VideoSyncTimeList");
        bytes_.CheckUnchanged();
        record = document_->videoSync;
    });
}

ZT_Result SensorFileHandlerImpl::GetRootChildrenClient(void* handle) noexcept {
    return GetGroupChildrenClient(kRootPath.bytes, handle);
}

ZT_Result SensorFileHandlerImpl::GetGroupChildrenClient(const char* dataPath, void* handle) noexcept {
    return RunOperation(this, [&] {
        const HostTables tables = RequireHostTables();
        bytes_.CheckUnchanged();
        queries_.ForEachChild(PathFrom(dataPath), [&](const ZT_DataPath& path, std::uint64_t count) {
            HandOver(tables, handle, path, count);
        });
    });
}

ZT_Result SensorFileHandlerImpl::GetGroupChildInfoClient(const char* dataPath, void* handle) noexcept {
    return RunOperation(this, [&] {
        const HostTables tables = RequireHostTables();
        HandOver(tables, handle, queries_.GroupChildInfo(FindNode(dataPath)));
    });
}

ZT_Result SensorFileHandlerImpl::GetStaticDataInfoClient(const char* dataPath, void* handle) noexcept {
    return RunOperation(this, [&] {
        const HostTables tables = RequireHostTables();
        HandOver(tables, handle, queries_.StaticDataInfo(FindNode(dataPath)));
    });
}

ZT_Result SensorFileHandlerImpl::GetDynamicDataInfoClient(const char* dataPath, void* handle) noexcept {
    return RunOperation(this, [&] {
        const HostTables tables = RequireHostTables();
        HandOver(tables, handle, queries_.DynamicDataInfo(FindNode(dataPath)));
    });
}

ZT_Result SensorFileHandlerImpl::GetDynamicSamplesClient(const char* dataPath, ZT_Time start, ZT_Time end,
                                                         void* handle) noexcept {
    return RunOperation(this, [&] {
        const HostTables tables = RequireHostTables();
        HandOver(tables, handle, SamplesBetween(dataPath, start, end));
    });
}

ZT_Result SensorFileHandlerImpl::GetDynamicSampleClient(const char* dataPath, ZT_Time time, void* handle) noexcept {
    return RunOperation(this, [&] {
        const HostTables tables = RequireHostTables();
        HandOver(tables, handle, SampleAt(dataPath, time));
    });
}

ZT_Result SensorFileHandlerImpl::GetFileInfoClient(void* handle) noexcept {
    return RunOperation(this, [&] {
        const HostTables tables = RequireHostTables();
        bytes_.CheckUnchanged();
        HandOver(tables, handle, document_->info);
    });
}

ZT_Result SensorFileHandlerImpl::GetVideoSyncTimeListClient(void* handle) noexcept {
    return RunOperation(this, [&] {
        const HostTables tables = RequireHostTables();
        bytes_.CheckUnchanged();
        HandOver(tables, handle, document_->videoSync);
    });
}

}  // namespace zentor
