// The plug-ins of the process.
#pragma once

#include <memory>

#include "conversion/plugin/plugin_registry.h"

namespace zentor {

// The modules in the folder `zentor-plugins` beside the library, read when first asked for and kept until
// UnloadPlugins. Thread-safe.
std::shared_ptr<ZT_PLUGIN::ZT_ConverterHandler> Plugins();

// Unloads the modules and forgets them; raises the first failure of one afterwards.
void UnloadPlugins();
// The same where what modules say to their end is nobody's failure.
void ForgetPlugins() noexcept;

}  // namespace zentor
