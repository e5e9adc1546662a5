// The conversion driver: finds the converter for an input and runs it.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "files/document_record.h"
#include "files/placed_file.h"

namespace zentor {

// An input of the host: its path as given and absolute.
struct InputFile {
    std::string name;
    std::string path;
};

// Codes ZT_INVALID_FILE_PATH and ZT_FILE_PATH_TOO_LARGE (no usable path), ZT_FILE_NOT_EXIST (no such file).
InputFile CheckInput(const char* inputPath);

struct ConversionOptions {
    bool strict = false;                  // what a document would not give back as it went in is refused
    bool newOutput = false;               // a file that is at the output already stays
    bool faithful = false;                // numbers and texts come back as they went in
    bool anySize = false;                 // a strict conversion may make a document many times as large as its input
    std::string converter;                // by whom every input is converted; empty: who it belongs to
    std::vector<std::string> parameters;  // of that converter, "key=value"

    // What documents of one input differ by.
    std::string Kind() const;
};

// The document that stands for an input: the input itself when it is a vkjson document, or one that a converter makes
// now. That is temporary, or with an output beside it, to be placed.
struct PreparedDocument {
    std::shared_ptr<DocumentRecord> record;
    std::unique_ptr<PlacedFile> placed;  // null: the document is where it belongs

    bool IsConverted() const { return record->isTemporary || placed != nullptr; }
    // Puts it at the output, where the record then finds it. It must not be open. Codes of PlacedFile::Place.
    void Place();
};

// `outputPath` is absolute or empty. Codes of CheckTarget, CheckEscapedTexts, ZT_FILE_CREATE (the output is the input),
// ZT_TEMP_FOLDER, ZT_TEMP_FILE, ZT_FORMAT_NOT_SUPPORTED, ZT_CONVERSION (also: a parameter that the converter does not
// have), ZT_INVALID_POINTER (no converter is called so, or a parameter has no "="), and those of converters.
PreparedDocument PrepareInput(const InputFile& input, const std::string& outputPath, const ConversionOptions& options);

}  // namespace zentor
