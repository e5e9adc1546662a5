// What the built-in converters are called: by hosts that choose one, and as the creators of documents.
#pragma once

namespace zentor::identifiers {

inline constexpr const char* kBvh = "com.orvane.sensor.bvh";
inline constexpr const char* kCsv = "com.orvane.sensor.csv";
inline constexpr const char* kJson = "com.orvane.sensor.json";
inline constexpr const char* kTsv = "com.orvane.sensor.tsv";

}  // namespace zentor::identifiers
