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
    explicit ConversionDriver(OpenDocuments& openDocuments) : openDocuments_(openDocuments) {}

    // Makes a stream of the document that stands for the input at `inputPath`, which is absolute. Code 11.
    IVkjsonStream* MakeStream(std::shared_ptr<DocumentRecord> record, const std::string& inputPath);
    // Destroys a stream. Codes 1 (an operation of it is calling this thread), 56 (there are none), 57 (not one of
    // these).
    void ReleaseStream(IVkjsonStream* stream);

private:
    OpenDocuments& openDocuments_;
    std::mutex streamsMutex_;
    std::map<IVkjsonStream*, std::unique_ptr<VkjsonStreamImpl>> streams_;
};

// An input of the host: its path as given and absolute.
struct InputFile {
    std::string name;
    std::string path;
};

// Codes 2 and 3 (no usable path), 4 (no such file).
InputFile CheckInput(const char* inputPath);

// The document that stands for an input: the input itself when it is a vkjson document, or a temporary document that a
// converter makes now. It stands in the folder for temporary files, or in the folder of `outputPath`, an absolute path,
// when that is not empty. Codes of CheckOutput, 7 (the output is the input), 14, 15, 25, 1506, and those of converters.
std::shared_ptr<DocumentRecord> PrepareInput(const InputFile& input, const std::string& outputPath);

}  // namespace zentor
