// The interfaces of zentor.h, as C sees them: zentor.h includes this where there is no C++.
//
// An interface is a struct that points to the table of its functions, in the order of the slots; each function takes
// the interface first:
//
//     ISensorFileHandler* handler = NULL;
//     ZT_Result code = zentor->table->OpenFile(zentor, &handler, "run.csv", NULL);
//
// What the functions do, and with which codes they fail, is said in zentor.h.
#ifndef ZENTOR_C_INTERFACES_H
#define ZENTOR_C_INTERFACES_H

#include "zentor/zentor.h"

struct IVkjsonStreamTable {
    uint32_t (*Read)(IVkjsonStream* self, void* buffer, const uint32_t* count);
    ZT_Result (*SaveTo)(IVkjsonStream* self, const char* path);
    const char* (*DocumentPath)(IVkjsonStream* self);
    uint32_t (*Size)(IVkjsonStream* self);
    uint32_t (*Remaining)(IVkjsonStream* self);
    ZT_Result (*Rewind)(IVkjsonStream* self);
    void (*DeletingDestructor)(IVkjsonStream* self, uint32_t flags);
    void (*Acquire)(IVkjsonStream* self);
    void (*Release)(IVkjsonStream* self);
    void* (*GetInternal)(IVkjsonStream* self);
    void (*DestroyShared)(IVkjsonStream* self, uint32_t flags);
};

// Slots 0 to 8 fill records of C++; C uses the client forms, slots 10 to 18.
struct ISensorFileHandlerTable {
    ZT_Result (*GetRootChildren)(ISensorFileHandler* self, ZT_GroupChildren* children);
    ZT_Result (*GetGroupChildren)(ISensorFileHandler* self, const char* dataPath, ZT_GroupChildren* children);
    ZT_Result (*GetGroupChildInfo)(ISensorFileHandler* self, const char* dataPath, ZT_GroupChildInfo* info);
    ZT_Result (*GetStaticDataInfo)(ISensorFileHandler* self, const char* dataPath, ZT_StaticDataInfo* info);
    ZT_Result (*GetDynamicDataInfo)(ISensorFileHandler* self, const char* dataPath, ZT_DynamicDataInfo* info);
    ZT_Result (*GetDynamicSamples)(ISensorFileHandler* self, const char* dataPath, ZT_Time start, ZT_Time end,
                                   DynamicDataSampleSet* samples);
    ZT_Result (*GetDynamicSample)(ISensorFileHandler* self, const char* dataPath, ZT_Time time,
                                  DynamicDataSampleSet* samples);
    ZT_Result (*GetFileInfo)(ISensorFileHandler* self, ZT_FileInfo* info);
    ZT_Result (*GetVideoSyncTimeList)(ISensorFileHandler* self, ZT_VideoSyncTimeList* list);
    void (*DeletingDestructor)(ISensorFileHandler* self, uint32_t flags);
    ZT_Result (*GetRootChildrenClient)(ISensorFileHandler* self, void* handle);
    ZT_Result (*GetGroupChildrenClient)(ISensorFileHandler* self, const char* dataPath, void* handle);
    ZT_Result (*GetGroupChildInfoClient)(ISensorFileHandler* self, const char* dataPath, void* handle);
    ZT_Result (*GetStaticDataInfoClient)(ISensorFileHandler* self, const char* dataPath, void* handle);
    ZT_Result (*GetDynamicDataInfoClient)(ISensorFileHandler* self, const char* dataPath, void* handle);
    ZT_Result (*GetDynamicSamplesClient)(ISensorFileHandler* self, const char* dataPath, ZT_Time start, ZT_Time end,
                                         void* handle);
    ZT_Result (*GetDynamicSampleClient)(ISensorFileHandler* self, const char* dataPath, ZT_Time time, void* handle);
    ZT_Result (*GetFileInfoClient)(ISensorFileHandler* self, void* handle);
    ZT_Result (*GetVideoSyncTimeListClient)(ISensorFileHandler* self, void* handle);
};

struct IZentorTable {
    ZT_Result (*OpenFile)(IZentor* self, ISensorFileHandler** handler, const char* inputPath, const char* outputPath);
    ZT_Result (*CloseFile)(IZentor* self, ISensorFileHandler** handler);
    ZT_Result (*ConvertFile)(IZentor* self, IVkjsonStream** stream, const char* inputPath, uint8_t validate);
    ZT_Result (*ReleaseStream)(IZentor* self, IVkjsonStream** stream);
    void (*DeletingDestructor)(IZentor* self, uint32_t flags);
    void (*Acquire)(IZentor* self);
    void (*Release)(IZentor* self);
    void* (*GetInternal)(IZentor* self);
    void (*DestroyShared)(IZentor* self, uint32_t flags);
};

#ifndef __cplusplus
struct IVkjsonStream {
    const struct IVkjsonStreamTable* table;
};

struct ISensorFileHandler {
    const struct ISensorFileHandlerTable* table;
};

struct IZentor {
    const struct IZentorTable* table;
};
#endif

#endif
