// The native converter frame: how built-in converters make nodes.
//
// A failure of a model operation comes out as ZT_Exception with that code and the text of an internal converter
// failure, and the new node is released. A null converter fails with ZT_INVALID_POINTER, one whose document is not
// being written with ZT_WRITER_STREAM.
#pragma once

#include <span>
#include <string_view>

#include "conversion/converter_base.h"
#include "errors/converter_failure.h"
#include "errors/raise.h"
#include "model/dynamic_numbers.h"
#include "model/root.h"

namespace zentor {

// Runs `call`, which gets the error record of one model operation.
template <class Call>
void CallModel(Call&& call) {
    ZT_ErrorRecord error{0, 0, -1, -1};
    call(&error);
    if (error.code != 0) RaiseConverterFailure(error.code, error.extra1, error.extra2);
}

// How a converter describes a number: what it does not know stays unknown and is taken from the value.
struct NumberProperties {
    ZT_PLUGIN::NumberPattern pattern;
    ZT_PLUGIN::MinMax legalRange;
};

struct NumberArrayProperties {
    ZT_PLUGIN::NumberPattern pattern;
    std::vector<ZT_PLUGIN::MinMax> legalRanges;  // one for each element, or none
    std::vector<const char*> displayNames;       // one for each element, or none
    bool isPoint = false;
};

// A dynamic array of 1 to 3 numbers.
struct DynamicArrayDescription {
    std::string_view matchName;
    std::string_view displayName;
    std::string_view sampleSetId;
    std::uint64_t dimensions = 0;
    ZT_PLUGIN::Interpolation interpolation = ZT_PLUGIN::Interpolation::kLinear;
    NumberArrayProperties properties;
};

// The root of the document that this stream writes.
ZT_PLUGIN::Owner<ZT_PLUGIN::VkjsonRootImpl> NativeCreateRoot(const ZT_ConverterHandlerBase* converter,
                                                             std::uint64_t streamId);
ZT_PLUGIN::Owner<ZT_PLUGIN::VkjsonGroupImpl> NativeCreateGroup(const ZT_ConverterHandlerBase* converter,
                                                               std::string_view matchName,
                                                               std::string_view displayName);
ZT_PLUGIN::Owner<ZT_PLUGIN::VkjsonStaticDataNumImpl> NativeCreateStaticNum(const ZT_ConverterHandlerBase* converter,
                                                                           std::string_view matchName,
                                                                           std::string_view displayName, double value,
                                                                           const NumberProperties& properties);
ZT_PLUGIN::Owner<ZT_PLUGIN::VkjsonStaticDataNumArrImpl> NativeCreateStaticNumArr(
    const ZT_ConverterHandlerBase* converter, std::string_view matchName, std::string_view displayName,
    std::span<const double> values, const NumberArrayProperties& properties);
ZT_PLUGIN::Owner<ZT_PLUGIN::VkjsonStaticDataStringImpl> NativeCreateStaticString(
    const ZT_ConverterHandlerBase* converter, std::string_view matchName, std::string_view displayName,
    std::string_view value, const ZT_PLUGIN::StringProperties& properties);
ZT_PLUGIN::Owner<ZT_PLUGIN::VkjsonStaticDataBoolImpl> NativeCreateStaticBool(const ZT_ConverterHandlerBase* converter,
                                                                             std::string_view matchName,
                                                                             std::string_view displayName, bool value);

// Before anything else fails with ZT_WRITER_DIMENSIONS for other than 1 to 3 dimensions, and with ZT_WRITER_RANGES for
// other than one range for each, or none. A ZT_PluginException with ZT_DISPLAY_NAME_COUNT for other than one display
// name for each, or none.
ZT_PLUGIN::Owner<ZT_PLUGIN::VkjsonDynamicDataNumArrImpl> NativeCreateDynamicNumArr(
    const ZT_ConverterHandlerBase* converter, const DynamicArrayDescription& description);

}  // namespace zentor
