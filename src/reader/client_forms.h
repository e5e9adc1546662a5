// Hands the results of queries to the host suite, piece by piece.
#pragma once

#include "reader/sample_data_processor.h"
#include "zentor/records.h"

namespace zentor {

// The suite that results go to. Code 21 when there is none.
const ZT_HostSuite& RequireHostSuite();

// The path of one child in a list of `childCount`.
void HandOver(const ZT_HostSuite& suite, void* handle, const ZT_DataPath& path, std::uint64_t childCount);
void HandOver(const ZT_HostSuite& suite, void* handle, const ZT_GroupChildInfo& info);
void HandOver(const ZT_HostSuite& suite, void* handle, const ZT_StaticDataInfo& info);
void HandOver(const ZT_HostSuite& suite, void* handle, const ZT_DynamicDataInfo& info);
// All of them are read once before the first is handed over, so that a malformed one is found in time: codes 39.
void HandOver(const ZT_HostSuite& suite, void* handle, const SampleRange& samples);
void HandOver(const ZT_HostSuite& suite, void* handle, const ZT_FileInfo& info);
void HandOver(const ZT_HostSuite& suite, void* handle, const ZT_VideoSyncTimeList& list);

}  // namespace zentor
