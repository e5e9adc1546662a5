// The formats that the library reads by itself.
#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "conversion/converter_base.h"

namespace zentor {

struct NativeFormat {
    std::string_view extension;  // lower case, without a dot
    const char* displayName;
    const char* identifier;  // of the converter; null for documents
    // Makes the converter; null for documents, which are read as they are.
    std::unique_ptr<ZT_ConverterHandlerBase> (*makeConverter)(ConversionInfo info);
};

// All formats, by ascending extension.
std::span<const NativeFormat> NativeFormats();

// The format whose converter has this identifier, or this last part of one; null when there is none.
const NativeFormat* FindFormatOfConverter(std::string_view identifier);
// Whether a converter is called so, by its whole identifier or by the last part of it (csv for com.orvane.sensor.csv).
bool IsCalled(std::string_view identifier, std::string_view name);

// The format of an extension in lower case that has a converter, or null.
const NativeFormat* FindConvertibleFormat(std::string_view extension);

}  // namespace zentor
