// Error codes that a host receives in reports, as results of operations and from GetLastException_1.
//
// The numbers never change. Several failures share a code; the message text tells them apart. Codes from 1000 on
// come from the converting side: a file or memory failure with code c while a document is written arrives as c + 1000.
#ifndef ZENTOR_ERROR_CODES_H
#define ZENTOR_ERROR_CODES_H

#include <stdint.h>

// The type of enumerations, where the language lets it be said; in C their values are ints.
#ifdef __cplusplus
#define ZT_UINT32_ENUM : uint32_t
#else
#define ZT_UINT32_ENUM
#endif

enum ZT_ErrorCode ZT_UINT32_ENUM {
    ZT_OK = 0,                     // success
    ZT_INVALID_POINTER = 1,        // a null or foreign pointer; bad Unicode; an empty data path; a time with scale 0
    ZT_INVALID_FILE_PATH = 2,      // a null or empty path
    ZT_FILE_PATH_TOO_LARGE = 3,    // a path of 65535 bytes or more
    ZT_FILE_NOT_EXIST = 4,         // no such file, or the path names something that is not a file
    ZT_FILE_STAT = 5,              // the size of a file cannot be read
    ZT_FILE_OPEN = 6,              // a file cannot be opened
    ZT_FILE_CREATE = 7,            // a file cannot be created, or output and input are the same file
    ZT_FILE_CLOSE = 8,             // a file cannot be closed
    ZT_FILE_DELETE = 9,            // a file cannot be deleted
    ZT_FILE_SEEK = 10,             // a position in a file cannot be set, or a file cannot be cut
    ZT_FILE_READ = 11,             // a file or its length cannot be read, or a document is too long for a stream
    ZT_PATH_CONVERSION = 12,       // a path is not valid text for the system
    ZT_FILE_PERMISSION = 13,       // the system denies access to a file
    ZT_TEMP_FOLDER = 14,           // there is no folder for temporary files
    ZT_TEMP_FILE = 15,             // no temporary file name is free
    ZT_FOLDER_OPEN = 16,           // a folder cannot be listed
    ZT_FOLDER_CLOSE = 17,          // the listing of a folder cannot be closed
    ZT_ASSERTION = 19,             // an assertion of the JSON library failed
    ZT_GENERAL = 21,               // client tables not set, no parser, no mapping, no samples, rename onto a file
    ZT_RENAME = 22,                // a file cannot be renamed
    ZT_UNKNOWN = 23,               // a failure that the library does not know
    ZT_FORMAT_NOT_SUPPORTED = 25,  // no converter takes this file
    ZT_NO_FILE_OPENED = 26,        // close was called while no file is open
    ZT_INVALID_FILE_HANDLER = 27,  // the handler does not belong to this manager
    ZT_MISSING_PROPERTY = 28,      // a mandatory property of a document is missing
    ZT_TOP_LEVEL_PROPERTY = 30,    // a property does not belong at the top of a document of this version
    ZT_DEPENDENT_PROPERTY = 31,    // a property comes before the one that it depends on
    ZT_INVALID_JSON = 32,          // a document is not valid JSON
    ZT_DATA_PATH = 33,             // a data path names no node, or a node of another kind
    ZT_OUT_OF_MEMORY = 34,         // memory, or the disk, is full
    ZT_SAMPLE_ID_NOT_FOUND = 35,   // no dynamic node has this sample-set identifier
    ZT_SAMPLE_SET_INFO = 36,       // a sample set would end past the end of the file
    ZT_DUPLICATE_SAMPLE_ID = 37,   // two dynamic nodes share a sample-set identifier
    ZT_SAMPLES_NOT_FOUND = 38,     // a dynamic node has no samples
    ZT_SAMPLE_DATA = 39,           // a sample or a sample set is malformed
    ZT_DUPLICATE_MATCH_NAME = 40,  // two nodes share a match name
    ZT_FRAME_RATE = 41,            // drop frame at a rate other than 29.97 and 59.94
    ZT_MATCH_NAME = 42,            // a match name has other characters than letters and digits
    ZT_PROPERTY_TYPE = 43,         // a property has the wrong JSON type
    ZT_PROPERTY_VALUE = 44,        // a property has a value outside its set
    ZT_DATA_PATH_BRACKET = 45,     // a data path lacks a closing bracket
    ZT_CONDITIONAL_PROPERTY = 46,  // a property is present that another one rules out, or the reverse
    ZT_EMPTY_ARRAY = 47,           // an array that needs elements has none
    ZT_WRITER = 48,                // a document cannot be written
    ZT_DYNAMIC_NODE_NOT_PRESENT = 49,  // a sample set belongs to no dynamic node
    ZT_INTERPOLATION = 53,             // an interpolation other than linear and hold
    ZT_EMPTY_FILE = 54,                // a document of no bytes
    ZT_FILE_WRITE = 55,                // a file cannot be written
    ZT_NO_STREAM_CREATED = 56,         // release was called while no stream exists
    ZT_INVALID_STREAM = 57,            // the stream does not belong to this manager
    ZT_OUTPUT_FOLDER = 58,             // the folder of an output path does not exist
    ZT_NULL_ARGUMENT = 1001,           // a null pointer where a converter has to give values
    ZT_CAPTURE_OPEN = 1006,       // a capture cannot be opened; a file cannot be opened while a document is written
    ZT_MODULE_LOADING = 1021,     // a plug-in module cannot be loaded
    ZT_CONVERTER_UNKNOWN = 1023,  // a failure while converting that the library does not know
    ZT_CONVERTER_OUT_OF_MEMORY = 1034,  // memory, or the disk, is full while a document is written
    ZT_PLUGIN_INITIALIZE = 1500,        // a plug-in module refused to start
    ZT_MANIFEST = 1503,                 // the manifest of a plug-in module cannot be read
    ZT_MANIFEST_SCHEMA = 1504,          // the manifest of a plug-in module breaks its schema
    ZT_EMPTY_CREATOR = 1505,            // a document without a creator
    ZT_CONVERSION = 1506,               // a file cannot be converted
    ZT_FRAME_TIME = 1508,               // a capture with a frame time of 0.001 seconds or less
    ZT_INVALID_DYNAMIC_NODE = 2001,     // a null, attached, unattached or finished dynamic node, whichever cannot be
    ZT_INVALID_STATIC_NODE = 2002,      // a null, attached or late static node, or an array without elements
    ZT_INVALID_GROUP = 2003,            // a null, attached or late group, one too deep or in itself, or a second root
    ZT_DIMENSION_COUNT = 2004,          // an array of an impossible number of dimensions, or a sample of another number
    ZT_RANGE_COUNT = 2005,              // as many ranges as dimensions are needed
    ZT_INCOMPLETE_PATTERN = 2006,       // exactly one of the two digit counts of a pattern is unset
    ZT_RANGE_ORDER = 2007,              // a range whose minimum is above its maximum
    ZT_RANGE_VALUE = 2008,              // a value outside its range, or no finite number
    ZT_CONVERTER_FAILURE = 2009,        // a converter failed without saying why
    ZT_WRITER_STREAM = 2011,            // the document of a built-in converter is not being written
    ZT_WRITER_SYNC_TIME = 2012,         // a time of the video-sync list is none of the document's time mode
    ZT_STREAM_NOT_OPEN = 2014,          // the conversion that a node belongs to is over, or never was
    ZT_SAMPLE_TIME = 2015,              // a sample's time is none of the document's form, or before its predecessor
    ZT_FOREIGN_OBJECT = 2016,           // a pointer that is no live object of this library
    ZT_WRITER_DIMENSIONS = 2017,        // a dynamic array of a built-in converter has other than 1 to 3 dimensions
    ZT_WRITER_RANGES = 2018,            // a dynamic array of a built-in converter has not one range for each dimension
    ZT_DISPLAY_NAME_COUNT = 2019,       // as many display names as dimensions are needed
    ZT_TIME_MODE_FIXED = 2020,          // the time mode cannot change any more: the header or a sample is there
    ZT_TIME_MODE_INVALID = 2021,        // a frame rate or precision that cannot be, or no time mode for a sample
    ZT_INVALID_NAME = 2022,             // a node without a name, or a match name with other than letters and digits
    ZT_UNBALANCED_TEXT = 2023,          // the square brackets of a sample's text do not balance
    ZT_UNKNOWN_NODE_KIND = 2026,        // reserved: a node of a kind that the library does not know
    ZT_NULL_RESULT = 2027,              // no place for a new object
    ZT_VERSION_TOO_NEW = 2029,          // an interface version above the newest
    ZT_VERSION_ZERO = 2030,             // interface version 0
    ZT_CANCELLED = 3000                 // the host's progress callback has cancelled the operation
};

#endif
