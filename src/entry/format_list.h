// What hosts are told about formats and plug-ins.
#pragma once

#include "zentor/zentor.h"

namespace zentor {

// Calls the suite's entry for each format, by ascending extension: the built-in ones, and those that plug-ins add.
void ListFormats(const ZT_HostSuite& host, void* listContext);
// Calls the entries of the suite's extensions for each plug-in module that was found.
void ListPlugins(void* listContext);

}  // namespace zentor
