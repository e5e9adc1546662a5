// A converter of a plug-in module, as the driver uses it.
#pragma once

#include "conversion/converter_base.h"
#include "conversion/plugin/plugin_registry.h"

namespace ZT_PLUGIN {

class ZT_ConverterHandlerInstance final : public zentor::ZT_ConverterHandlerBase {
public:
    // `converter` must outlive it; its module is loaded.
    ZT_ConverterHandlerInstance(zentor::ConversionInfo info, const PluginConverter& converter)
        : ZT_ConverterHandlerBase(std::move(info)), converter_(converter) {}

    // One session of the module. Codes ZT_MODULE_LOADING (not loaded); the module's, with its details; ZT_CONVERSION
    // when it says that it has made no document, or says that it has without having finished one.
    bool Convert() override;

private:
    const PluginConverter& converter_;
};

}  // namespace ZT_PLUGIN
