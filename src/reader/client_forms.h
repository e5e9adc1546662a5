// Hands the results of queries to the host suite, piece by piece.
#pragma once

#include "zentor/records.h"

namespace zentor {

// The suite that results go to. Code 21 when there is none.
const ZT_HostSuite& RequireHostSuite();

// The path of one child in a list of `childCount`.
void HandOver(const ZT_HostSuite& suite, void* handle, const ZT_DataPath& path, std::uint64_t childCount);
void HandOver(const ZT_HostSuite& suite, void* handle, const ZT_GroupChildInfo& info);
void HandOver(const ZT_HostSuite& suite, void* handle, const ZT_StaticDataInfo& info);
void HandOver(const ZT_HostSuite& suite, void* handle, const ZT_DynamicDataInfo& info);
void HandOver(const ZT_HostSuite& suite, void* handle, const ZT_FileInfo& info);
void HandOver(const ZT_HostSuite& suite, void* handle, const ZT_VideoSyncTimeList& list);

}  // namespace zentor
