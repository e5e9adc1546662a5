// The tables of callbacks and options that the host suite points at, read as far as the host has them.
#pragma once

#include <algorithm>
#include <cstring>

#include "errors/host_suite.h"

namespace zentor {

// A table of the host's as far as the host has it; what it lacks is 0.
template <class Table>
Table ReadHostTable(const Table* host) noexcept {
    constexpr std::size_t kEntry = 8;  // of which no part is taken
    static_assert(sizeof(Table) % kEntry == 0);
    Table table{};
    if (host != nullptr) std::memcpy(&table, host, std::min<std::size_t>(host->size / kEntry * kEntry, sizeof table));
    return table;
}

// The tables of results of the suite, read now; empty ones without a suite.
struct HostTables {
    ZT_DataPathCallbacks dataPaths;
    ZT_NodeInfoCallbacks nodeInfo;
    ZT_StaticDataCallbacks staticData;
    ZT_DynamicDataCallbacks dynamicData;
    ZT_SampleCallbacks samples;
    ZT_FileInfoCallbacks fileInfo;
    ZT_VideoSyncCallbacks videoSync;
    ZT_DataTypeCallbacks dataTypes;
};
HostTables ReadHostTables() noexcept;
// The extensions of the suite.
ZT_HostExtensions ReadHostExtensions() noexcept;
ZT_HostOptions ReadHostOptions() noexcept;

}  // namespace zentor
