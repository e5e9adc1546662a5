#include "errors/host_tables.h"

namespace zentor {

HostTables ReadHostTables() noexcept {
    static constexpr ZT_HostSuite kNoSuite{};
    const ZT_HostSuite* const kept = HostSuite();
    const ZT_HostSuite& suite = kept == nullptr ? kNoSuite : *kept;
    return {ReadHostTable(suite.dataPaths),   ReadHostTable(suite.nodeInfo), ReadHostTable(suite.staticData),
            ReadHostTable(suite.dynamicData), ReadHostTable(suite.samples),  ReadHostTable(suite.fileInfo),
            ReadHostTable(suite.videoSync),   ReadHostTable(suite.dataTypes)};
}

ZT_HostExtensions ReadHostExtensions() noexcept {
    const ZT_HostSuite* const suite = HostSuite();
    return ReadHostTable(suite == nullptr ? nullptr : suite->extensions);
}

ZT_HostOptions ReadHostOptions() noexcept { return ReadHostTable(ReadHostExtensions().options); }

}  // namespace zentor
