// Biovision Hierarchy motion captures.
#pragma once

#include "conversion/converter_base.h"

namespace zentor {

// Turns a capture into one group for each joint, with its offset, positions and rotations. Frame i is shown at frame i
// of the document's time codes.
class BVHConverter final : public ZT_ConverterHandlerBase {
public:
    explicit BVHConverter(ConversionInfo info) : ZT_ConverterHandlerBase(std::move(info)) {}

    // ZT_Exception with ZT_CONVERSION and the byte offset and the line as details for what is no capture;
    // ZT_PluginException with ZT_CAPTURE_OPEN or ZT_FRAME_TIME.
    bool Convert() override;
};

}  // namespace zentor
