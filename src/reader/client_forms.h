// Hands the results of queries to the host suite, piece by piece.
#pragma once

#include "errors/host_tables.h"
#include "reader/sample_range.h"
#include "zentor/records.h"

namespace zentor {

// The tables that results go to. Code ZT_GENERAL when there is no suite.
HostTables RequireHostTables();

// The path of one child in a list of `childCount`.
void HandOver(const HostTables& tables, void* handle, const ZT_DataPath& path, std::uint64_t childCount);
void HandOver(const HostTables& tables, void* handle, const ZT_GroupChildInfo& info);
void HandOver(const HostTables& tables, void* handle, const ZT_StaticDataInfo& info);
void HandOver(const HostTables& tables, void* handle, const ZT_DynamicDataInfo& info);
// All of them are read once before the first is handed over, so that a malformed one is found in time: ZT_SAMPLE_DATA.
void HandOver(const HostTables& tables, void* handle, SampleRange samples);
void HandOver(const HostTables& tables, void* handle, const ZT_FileInfo& info);
void HandOver(const HostTables& tables, void* handle, const ZT_VideoSyncTimeList& list);

}  // namespace zentor
