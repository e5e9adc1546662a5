#include "conversion/plugin/services.h"

#include "errors/trace.h"
#include "model/live_objects.h"
#include "model/node_factories.h"
#include "util/thread_slot.h"

namespace zentor {

using namespace ZT_PLUGIN;

namespace {

constexpr ZT_NodeFactories kFactories{
    sizeof(ZT_NodeFactories), &CreateRoot,      &CreateGroup,        &CreateDynamicNumArr, &CreateDynamicNum,
    &CreateDynamicString,     &CreateStaticNum, &CreateStaticNumArr, &CreateStaticString,  &CreateStaticBool,
};

// The identifier of the converter that each thread's CheckFileFormat is about.
os::ThreadSlot& CheckedConverter() {
    static os::ThreadSlot slot(nullptr);
    return slot;
}

void TraceText(const char* text) noexcept { Trace(text == nullptr ? std::string_view() : text); }

const char* GetCheckedConverter() { return static_cast<const char*>(CheckedConverter().Get()); }

ZT_HostServices hostServices{
    sizeof(ZT_HostServices), &AcquireLiveObject, &ReleaseLiveObject, nullptr, nullptr, &GetCheckedConverter, &TraceText,
};

}  // namespace

void SetHostTables(const void* table1, const void* table2) noexcept {
    hostServices.hostTable1 = table1;
    hostServices.hostTable2 = table2;
}

CheckedConverterScope::CheckedConverterScope(const std::string& identifier) : outer_(CheckedConverter().Get()) {
    // The module only reads it.
    CheckedConverter().Set(const_cast<char*>(identifier.c_str()));
}

CheckedConverterScope::~CheckedConverterScope() { CheckedConverter().Set(outer_); }

const ZT_PluginServices& PluginServices() noexcept {
    static constexpr ZT_PluginServices services{sizeof(ZT_PluginServices), kInterfaceVersion, &kFactories,
                                                &hostServices};
    return services;
}

}  // namespace zentor
