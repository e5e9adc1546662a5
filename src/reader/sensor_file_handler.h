// The object that a host holds for an open document.
#pragma once

#include <memory>
#include <string>

#include "files/document_record.h"
#include "model/shared_object_impl.h"
#include "reader/document_queries.h"
#include "reader/mapped_document.h"
#include "reader/parser.h"
#include "zentor/records.h"

namespace zentor {

// The library's view of a handler.
class ISensorFileHandler_I : public ISensorFileHandler {
public:
    virtual ~ISensorFileHandler_I() = default;
};

// How a document is read; a host can ask for each.
struct ReadOptions {
    bool privateCopy = false;   // from a copy of its own
    bool checkSamples = false;  // every sample when it is opened
};

// Owned by the manager, whatever a host's reference counting says. Read-only once it exists.
class SensorFileHandlerImpl final : public ISensorFileHandler_I, public ZT_PLUGIN::SharedObjectImpl {
public:
    // Reads the document that stands for the input. Codes of MappedDocument and ParseDocument; those of samples that
    // are checked.
    SensorFileHandlerImpl(std::string inputPath, std::shared_ptr<const DocumentRecord> record,
                          const ReadOptions& options);
    ~SensorFileHandlerImpl() override = default;

    const std::string& InputPath() const { return inputPath_; }
    const std::string& DocumentPath() const { return record_->documentPath; }

    ZT_Result GetRootChildren(ZT_GroupChildren* children) noexcept override;
    ZT_Result GetGroupChildren(const char* dataPath, ZT_GroupChildren* children) noexcept override;
    ZT_Result GetGroupChildInfo(const char* dataPath, ZT_GroupChildInfo* info) noexcept override;
    ZT_Result GetStaticDataInfo(const char* dataPath, ZT_StaticDataInfo* info) noexcept override;
    ZT_Result GetDynamicDataInfo(const char* dataPath, ZT_DynamicDataInfo* info) noexcept override;
    ZT_Result GetDynamicSamples(const char* dataPath, ZT_Time start, ZT_Time end,
                                DynamicDataSampleSet* samples) noexcept override;
    ZT_Result GetDynamicSample(const char* dataPath, ZT_Time time, DynamicDataSampleSet* samples) noexcept override;
    ZT_Result GetFileInfo(ZT_FileInfo* info) noexcept override;
    ZT_Result GetVideoSyncTimeList(ZT_VideoSyncTimeList* list) noexcept override;
    void DeletingDestructor(std::uint32_t) noexcept override {}
    ZT_Result GetRootChildrenClient(void* handle) noexcept override;
    ZT_Result GetGroupChildrenClient(const char* dataPath, void* handle) noexcept override;
    ZT_Result GetGroupChildInfoClient(const char* dataPath, void* handle) noexcept override;
    ZT_Result GetStaticDataInfoClient(const char* dataPath, void* handle) noexcept override;
    ZT_Result GetDynamicDataInfoClient(const char* dataPath, void* handle) noexcept override;
    ZT_Result GetDynamicSamplesClient(const char* dataPath, ZT_Time start, ZT_Time end, void* handle) noexcept override;
    ZT_Result GetDynamicSampleClient(const char* dataPath, ZT_Time time, void* handle) noexcept override;
    ZT_Result GetFileInfoClient(void* handle) noexcept override;
    ZT_Result GetVideoSyncTimeListClient(void* handle) noexcept override;

private:
    void OnUnreferenced() noexcept override {}

    NodeNumber FindNode(const char* dataPath) const;
    // At least one sample of the node at a path: those between two times, or the one at a time. Codes
    // ZT_INVALID_POINTER, ZT_FILE_STAT, ZT_GENERAL, ZT_DATA_PATH, ZT_SAMPLE_SET_INFO, ZT_SAMPLES_NOT_FOUND,
    // ZT_SAMPLE_DATA, ZT_DATA_PATH_BRACKET.
    SampleRange SamplesBetween(const char* dataPath, ZT_Time start, ZT_Time end) const;
    SampleRange SampleAt(const char* dataPath, ZT_Time time) const;

    std::string inputPath_;
    std::shared_ptr<const DocumentRecord> record_;  // before the mapping, so that it is unmapped when it is deleted
    MappedDocument bytes_;
    std::unique_ptr<VkjsonDocument> document_;
    DocumentQueries queries_;
};

}  // namespace zentor
