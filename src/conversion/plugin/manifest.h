// What a plug-in module says about its converters.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zentor {

// Bytes that an input has at an offset.
struct FormatSignature {
    std::uint64_t offset;
    std::string bytes;
};

struct ConverterManifest {
    std::string identifier;
    std::string name;  // in the locale asked for, else in English
    double version = 0;
    bool isForced = false;                    // comes before the built-in converters
    std::vector<FormatSignature> signatures;  // of one of them an input has the bytes
    std::vector<std::string> extensions;      // without a dot; A to Z in lower case
    std::vector<std::string> parameters;      // that hosts may give
    // A property that is allowed as it is but hardly meant; empty: none. Either an unknown one that looks like one that
    // is known, or "extensions" for one that no file name has. Without extensions and signatures the converter is there
    // for hosts that ask for it.
    std::string doubtfulProperty;
};

// The converters of a manifest, in its order. Codes ZT_MANIFEST (no JSON, with the byte offset; no "converter"),
// ZT_MANIFEST_SCHEMA (other than the schema has it, or a text with a zero in it; with the property).
std::vector<ConverterManifest> ReadManifest(std::string_view json, std::string_view locale);

}  // namespace zentor
