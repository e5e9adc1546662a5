// The conversion driver: finds the converter for an input, runs it, and keeps the streams that it hands out.
#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <string>

#include "conversion/vkjson_stream.h"

namespace zentor {

struct NativeFormat;

// Thread-safe.
class ConversionDriver {
public:
    // Converts a file, or takes it as it is when it is a vkjson document. Codes: 2, 3, 4 (no such file), 11, 21 (with
    // `validate`: documents cannot be read yet), 25, 1506, and the codes of converters.
    IVkjsonStream* ConvertFile(const char* inputPath, bool validate);
    // Destroys a stream. Codes 56 (there are none), 57 (not one of these).
    void ReleaseStream(IVkjsonStream* stream);

private:
    std::mutex streamsMutex_;
    std::map<IVkjsonStream*, std::unique_ptr<VkjsonStreamImpl>> streams_;
};

// Checks that an input path is usable and names a file: codes 2, 3, 4.
void CheckInput(const char* inputPath);

}  // namespace zentor
