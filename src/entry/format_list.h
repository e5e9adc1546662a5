// What hosts are told about formats and plug-ins.
#pragma once

#include "zentor/zentor.h"

namespace zentor {

// Calls the suite's entry for each format, by ascending extension: the built-in ones, and those that plug-ins add.
void ListFormats(const ZT_HostSuite& host, void* listContext);
// Calls the entries of the suite's extensions for each folder with plug-in modules and each module that was found.
// Loads the modules when the suite wants to know how that goes.
void ListPlugins(void* listContext);

}  // namespace zentor
