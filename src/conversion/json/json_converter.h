// JSON of any shape.
#pragma once

#include "conversion/converter_base.h"

namespace zentor {

// Turns a JSON text into static data: objects and arrays become groups, nested as they are. Codes ZT_CONVERSION, with
// the byte offset and the line, for what FindJsonFault finds; those of JsonText and of the model.
class JsonConverter final : public ZT_ConverterHandlerBase {
public:
    explicit JsonConverter(ConversionInfo info) : ZT_ConverterHandlerBase(std::move(info)) {}
    bool Convert() override;
};

}  // namespace zentor
