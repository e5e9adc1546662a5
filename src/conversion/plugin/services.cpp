#include "conversion/plugin/services.h"

#include "model/live_objects.h"
#include "model/node_factories.h"

namespace zentor {

using namespace ZT_PLUGIN;

namespace {

constexpr ZT_NodeFactories kFactories{
    sizeof(ZT_NodeFactories), &CreateRoot,      &CreateGroup,        &CreateDynamicNumArr, &CreateDynamicNum,
    &CreateDynamicString,     &CreateStaticNum, &CreateStaticNumArr, &CreateStaticString,  &CreateStaticBool,
};

ZT_HostServices hostServices{sizeof(ZT_HostServices), &AcquireLiveObject, &ReleaseLiveObject, nullptr, nullptr};

}  // namespace

void SetHostTables(const void* table1, const void* table2) noexcept {
    hostServices.hostTable1 = table1;
    hostServices.hostTable2 = table2;
}

const ZT_PluginServices& PluginServices() noexcept {
    static constexpr ZT_PluginServices services{sizeof(ZT_PluginServices), kInterfaceVersion, &kFactories,
                                                &hostServices};
    return services;
}

}  // namespace zentor
