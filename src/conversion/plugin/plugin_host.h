// The plug-ins of the process.
#pragma once

#include <memory>

#include "conversion/plugin/plugin_registry.h"

namespace zentor {

// The modules of the search path, read when first asked for and kept until UnloadPlugins; what could not be read is
// tried again each time. Thread-safe.
std::shared_ptr<ZT_PLUGIN::ZT_ConverterHandler> Plugins();

// Unloads the modules and forgets them; raises the first failure of one afterwards.
void UnloadPlugins();
// The same where what modules say to their end is nobody's failure.
void ForgetPlugins() noexcept;

}  // namespace zentor
