// What every converter is, built in or not.
#pragma once

#include <cstdint>
#include <string>

#include "format/content_form.h"

namespace zentor {

// What a converter is told.
struct ConversionInfo {
    std::string inputPath;     // absolute
    std::string originalName;  // the input path as the host passed it, for messages
    std::uint64_t streamId;    // of the stream that the document goes to
    ContentForm form{};        // of the document
    bool isStrict = false;     // what a document cannot give back is refused
    bool anySize = false;      // but for the document's size
};

// Lives for one conversion.
class ZT_ConverterHandlerBase {
public:
    explicit ZT_ConverterHandlerBase(ConversionInfo info) : info_(std::move(info)) {}
    virtual ~ZT_ConverterHandlerBase() = default;
    ZT_ConverterHandlerBase(const ZT_ConverterHandlerBase&) = delete;
    ZT_ConverterHandlerBase& operator=(const ZT_ConverterHandlerBase&) = delete;

    // True when the document was written; false when the input cannot be converted and there is no more to say.
    // Failures: ZT_Exception, ZT_PluginException.
    virtual bool Convert() = 0;

    const ConversionInfo& Info() const { return info_; }

private:
    ConversionInfo info_;
};

}  // namespace zentor
