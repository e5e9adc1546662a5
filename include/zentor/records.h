// The records that the typed queries of ISensorFileHandler (slots 0 to 8) fill, for hosts that are built with the
// library's own toolchain: they hold standard strings and vectors, and Boost's variant. Other hosts use the client
// forms (slots 10 to 18), which need nothing of this header.
//
// A record belongs to the caller. A query empties it before it fills it; after a failure it is empty.
#ifndef ZENTOR_RECORDS_H
#define ZENTOR_RECORDS_H

#include <boost/variant.hpp>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "zentor/zentor.h"

// One step of a data path: a match name (empty: none), an index among the siblings (-1: none), or both.
struct ZT_DataPathItem {
    std::string matchName;
    std::int64_t index = -1;
};

// Names one node of the outline. The first item is the root: match name "dataOutline", index -1.
struct ZT_DataPath {
    std::vector<ZT_DataPathItem> items;

    // The path as the queries take it: an index for each level where there is one, else the match name.
    std::string ToString() const {
        std::string text;
        for (const ZT_DataPathItem& item : items) {
            text += item.index >= 0 ? '[' + std::to_string(item.index) + ']' : "[\"" + item.matchName + "\"]";
        }
        return text;
    }
};

// The children of a group, in the order of the outline. A path is the one asked for, as it was given, and an item more
// with the child's index and match name.
struct ZT_GroupChildren {
    std::vector<ZT_DataPath> paths;
};

enum ZT_NodeType : std::uint32_t {
    ZT_NODE_GROUP = 0,
    ZT_NODE_DYNAMIC = 1,
    ZT_NODE_STATIC = 2,
    ZT_NODE_INVALID = 3,  // of a record that is not filled
};

struct ZT_GroupChildInfo {
    ZT_NodeType nodeType = ZT_NODE_INVALID;
    std::string displayName;
    std::string matchName;
};

// How a number is written in samples. Digit counts are -1 when the document has none.
struct ZT_NumberPattern {
    bool isSigned = false;
    std::int64_t digitsInteger = -1;
    std::int64_t digitsDecimal = -1;
};

// `occurring`: what the data occupies; `legal`: what it may occupy. In the unit of the data, ends included.
struct ZT_NumberRange {
    double occurringMin = 0;
    double occurringMax = 0;
    double legalMin = 0;
    double legalMax = 0;
};

// The type of a node and the properties that the type has; the others are as here.
struct ZT_DataType {
    // As in the document: "number", "string", "boolean" and "numberArray" for static nodes, "numberString",
    // "paddedString" and "numberStringArray" for dynamic ones. Documents before version 2 have "numberString",
    // "paddedString" and "numberArray" for both.
    std::string type;
    ZT_NumberPattern pattern;                    // numbers and number arrays
    std::vector<ZT_NumberRange> ranges;          // one of a number, one for each element of an array
    std::int64_t maxLen = -1;                    // strings: the longest, in bytes; -1 when the document has none
    std::int64_t maxDigitsInStrLength = -1;      // strings: how many digits their lengths have; likewise
    bool eventMarkerB = false;                   // strings
    std::int64_t arraySize = -1;                 // arrays: elements; likewise
    bool isPoint = false;                        // arrays
    std::vector<std::string> arrayDisplayNames;  // arrays: one for each element, or none
};

struct ZT_StaticDataInfo {
    std::string displayName;
    std::string matchName;
    ZT_DataType dataType;
    boost::variant<double, std::string, bool, std::vector<double>> value;
};

struct ZT_DynamicDataInfo {
    std::string displayName;
    std::string matchName;
    std::string sampleSetID;
    std::string interpolation;  // "linear" or "hold"
    bool hasExpectedFrequencyB = false;
    std::uint64_t sampleCount = 0;
    // A duration in the form of the document's time strings; empty without an expected frequency.
    std::string expectedMaxInterSampleDuration;
    ZT_DataType dataType;
    // The times of the first and the last sample; empty without samples, or when these two cannot be read.
    std::string firstSampleTime;
    std::string lastSampleTime;
};

struct ZT_FileInfo {
    // Frames a second as a fraction of whole numbers; 0 and 1 when the times of the document are not time codes, or its
    // frame rate is no such fraction.
    std::uint32_t frameRateValue = 0;
    std::uint32_t frameRateScale = 1;
    std::string version;
    std::string creator;
    ZT_TimeMode timeMode = ZT_TIME_MODE_NONE;
    double framesPerSecond = 0;         // time codes
    bool dropFrame = false;             // time codes
    std::uint64_t precisionLength = 0;  // UTC: decimals of a second
    bool isGmt = false;                 // UTC: times end in "Z" rather than in an offset
};

// Ties a moment of a video file to the document's times: a frame number, or a time string.
struct ZT_VideoSyncTime {
    std::string fileName;
    boost::variant<std::uint64_t, std::string> at;
};

struct ZT_VideoSyncTimeList {
    std::vector<ZT_VideoSyncTime> entries;
};

// One sample: a time string of the document's form, and a number, a string, or the elements of an array.
struct ZT_Sample {
    std::string time;
    boost::variant<double, std::string, std::vector<double>> value;
};

struct DynamicDataSampleSet {
    std::vector<ZT_Sample> samples;
};

#endif
