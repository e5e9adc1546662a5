// What the library offers to plug-ins.
#pragma once

#include <string>

#include "model/include/plugin.h"

namespace zentor {

// The tables that the host application passed to CreateZentor_1, null for none; set before any plug-in is initialised.
void SetHostTables(const void* table1, const void* table2) noexcept;

// While it lives, the calling thread's CheckFileFormat can ask which converter it is about.
class CheckedConverterScope {
public:
    // `identifier` must outlive it.
    explicit CheckedConverterScope(const std::string& identifier);
    ~CheckedConverterScope();
    CheckedConverterScope(const CheckedConverterScope&) = delete;
    CheckedConverterScope& operator=(const CheckedConverterScope&) = delete;

private:
    void* outer_;
};

// Lives as long as the process.
const ZT_PLUGIN::ZT_PluginServices& PluginServices() noexcept;

}  // namespace zentor
