// What stands around every operation that a converter calls on the model: failures become error records.
#pragma once

#include <new>

#include "errors/converter_failure.h"
#include "errors/exception.h"
#include "model/include/shared_object.h"
#include "zentor/error_codes.h"

namespace ZT_PLUGIN {

// Runs `body`; turns a library failure with code c into c + 1000 (one that has become a converter's already keeps its
// code), want of memory into ZT_CONVERTER_OUT_OF_MEMORY and anything unknown into ZT_CONVERTER_UNKNOWN, and passes
// plug-in exceptions on.
template <class Body>
void TranslateFailures(Body&& body) {
    try {
        body();
    } catch (const ZT_PluginException&) {
        throw;
    } catch (const ns_sensor::ZT_Exception& failure) {
        const bool isConverters = failure.code() >= zentor::kConvertingSideOffset;
        throw ZT_PluginException(failure.code() + (isConverters ? 0 : zentor::kConvertingSideOffset), failure.extra1(),
                                 failure.extra2());
    } catch (const std::bad_alloc&) {
        throw ZT_PluginException(ZT_CONVERTER_OUT_OF_MEMORY);
    } catch (...) {
        throw ZT_PluginException(ZT_CONVERTER_UNKNOWN);
    }
}

// Runs `body` and stores the outcome in `error` (null: nowhere).
template <class Body>
void RunForClient(ZT_ErrorRecord* error, Body&& body) noexcept {
    ZT_ErrorRecord outcome{0, ZT_OK, -1, -1};
    try {
        TranslateFailures(body);
    } catch (const ZT_PluginException& failure) {
        outcome = {0, failure.code(), failure.extra1(), failure.extra2()};
    }
    if (error != nullptr) *error = outcome;
}

}  // namespace ZT_PLUGIN
