// What the library offers to plug-ins.
#pragma once

#include "model/include/plugin.h"

namespace zentor {

// The tables that the host application passed to CreateZentor_1, null for none; set before any plug-in is initialised.
void SetHostTables(const void* table1, const void* table2) noexcept;

// Lives as long as the process.
const ZT_PLUGIN::ZT_PluginServices& PluginServices() noexcept;

}  // namespace zentor
