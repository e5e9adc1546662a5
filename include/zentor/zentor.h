// Zentor: turns recorded sensor and motion data into vkjson documents and reads vkjson documents back.
//
// This header is all that a host needs. It includes nothing but <stdint.h>, and what it declares can be called from any
// C++ compiler for the platform: the interfaces are flat tables of functions, without base classes, overloads, data or
// virtual destructors, and nothing is ever thrown across them. It is C (C11), too: see c_interfaces.h.
//
// Strings are zero-terminated UTF-8. Lengths count bytes, without the terminating zero.
//
// Errors. A failing function reports through the host suite's `reportError` and keeps code, message and details for
// GetLastException_1 on the same thread. Operations that return ZT_Result return the code too; 0 is success. After a
// failure out pointers are null, nothing was changed, and the library is as usable as before.
//
// Ownership. The host owns nothing that it receives. A manager goes back with DestroyZentor_1, a file handler with
// IZentor::CloseFile, a stream with IZentor::ReleaseStream; each nulls the host's pointer.
//
// Threads. Every exported function and every operation of IZentor may be called from any thread. A stream is used by
// one thread at a time. The queries of a file handler may run on several threads at once; the close that ends its use
// comes after them, and the last DestroyZentor_1 after all operations on all threads. The library starts no threads;
// callbacks run on the calling thread.
//
// Callbacks may use the library: query, open, convert, and close what they have opened. They cannot take away what is
// calling them: the last CloseFile of a handler out of one of its own queries, the release of a stream out of one of
// its operations, and the last DestroyZentor_1 out of any operation of the manager, a handler or a stream fail with
// ZT_INVALID_POINTER and change nothing. That holds for `reportError` during these operations, too. An exception that
// leaves a callback is caught and makes the operation end with ZT_UNKNOWN; one that leaves `reportError` itself is not
// reported, but is what GetLastException_1 tells.
#ifndef ZENTOR_ZENTOR_H
#define ZENTOR_ZENTOR_H

#include <stdint.h>

#include "zentor/error_codes.h"

// Of this header. What stands in it changes at its end alone while the first number stays: tables and slots that there
// are stay as they are, and hosts that were compiled with an older header work with a newer library.
#define ZENTOR_VERSION_MAJOR 0
#define ZENTOR_VERSION_MINOR 1
#define ZENTOR_VERSION_PATCH 0
#define ZENTOR_VERSION "0.1.0"
// For comparisons: 102 is 0.1.2.
#define ZENTOR_VERSION_NUMBER (ZENTOR_VERSION_MAJOR * 10000 + ZENTOR_VERSION_MINOR * 100 + ZENTOR_VERSION_PATCH)

#ifdef __cplusplus
namespace ZT_PLUGIN {
struct ISharedObject;
}
typedef ZT_PLUGIN::ISharedObject ZT_SharedObject;
#else
typedef struct ZT_SharedObject ZT_SharedObject;
#endif

// Records of the typed queries, for hosts built with the library's own toolchain: see records.h.
typedef struct ZT_GroupChildren ZT_GroupChildren;
typedef struct ZT_GroupChildInfo ZT_GroupChildInfo;
typedef struct ZT_StaticDataInfo ZT_StaticDataInfo;
typedef struct ZT_DynamicDataInfo ZT_DynamicDataInfo;
typedef struct DynamicDataSampleSet DynamicDataSampleSet;
typedef struct ZT_FileInfo ZT_FileInfo;
typedef struct ZT_VideoSyncTimeList ZT_VideoSyncTimeList;

// What this header defines, by names that C takes, too.
typedef struct ZT_Time ZT_Time;
typedef struct ZT_DataPathCallbacks ZT_DataPathCallbacks;
typedef struct ZT_NodeInfoCallbacks ZT_NodeInfoCallbacks;
typedef struct ZT_StaticDataCallbacks ZT_StaticDataCallbacks;
typedef struct ZT_DynamicDataCallbacks ZT_DynamicDataCallbacks;
typedef struct ZT_SampleCallbacks ZT_SampleCallbacks;
typedef struct ZT_FileInfoCallbacks ZT_FileInfoCallbacks;
typedef struct ZT_VideoSyncCallbacks ZT_VideoSyncCallbacks;
typedef struct ZT_DataTypeCallbacks ZT_DataTypeCallbacks;
typedef struct ZT_PluginCallbacks ZT_PluginCallbacks;
typedef struct ZT_HostOptions ZT_HostOptions;
typedef struct ZT_HostExtensions ZT_HostExtensions;
typedef struct ZT_HostSuite ZT_HostSuite;
typedef struct ZT_LibraryCallbacks ZT_LibraryCallbacks;
typedef struct IVkjsonStream IVkjsonStream;
typedef struct ISensorFileHandler ISensorFileHandler;
typedef struct IZentor IZentor;

// An error code; ZT_OK (0) is success.
typedef uint32_t ZT_Result;

// A time in seconds: value / scale. A scale of 0 is refused with ZT_INVALID_POINTER.
struct ZT_Time {
    int32_t value;
    uint32_t scale;
};

// ---------------------------------------------------------------------------------------------------------------------
// Host suite: the host's callbacks.
//
// The library keeps the first suite that it is given, for the life of the process; the table must stay where it is.
// Every entry may be null: the library then skips the call. Tables that the suite points at, and those that they point
// at, begin with their size in bytes where the host was compiled: the library reads no further, so that later versions
// can add entries at their ends, and takes what is not there for null. C++ sets the size by itself; C sets it by hand
// (a size of 0 makes the table an empty one). Texts and arrays handed to a callback live until it
// returns; lengths of texts are in bytes, counts of arrays in elements. A text that comes with a length has no
// terminating zero and may hold zeros. `handle` and the contexts are the host's own values, handed back untouched.

// How the samples of a document are timed.
enum ZT_TimeMode ZT_UINT32_ENUM {
    ZT_TIME_MODE_NONE = 0,      // the document says nothing of samples
    ZT_TIME_MODE_UTC = 1,       // dates and times of day
    ZT_TIME_MODE_TIMECODE = 2,  // SMPTE time codes
};

#if defined(__cplusplus)
#define ZT_OWN_SIZE(table) = sizeof(table)
#else
#define ZT_OWN_SIZE(table)
#endif

// Hands over lists of data paths (slot 0).
struct ZT_DataPathCallbacks {
    uint32_t size ZT_OWN_SIZE(ZT_DataPathCallbacks);
    // Once for each item of each path, in order. The first item is the root, "dataOutline" with index -1; then come the
    // items of the path asked for, as they were given: an index, or a match name and index -1; the last item is the
    // child and has both its match name, which may be empty, and its index among its siblings. `childCount` is the
    // number of paths in the whole list; `last` is 1 for the last item of a path, else 0.
    void (*addPathItem)(void* handle, const char* matchName, int64_t index, uint64_t childCount, uint8_t last);
};

// Hands over what a node is (slot 1).
struct ZT_NodeInfoCallbacks {
    uint32_t size ZT_OWN_SIZE(ZT_NodeInfoCallbacks);
    // `nodeType`: 0 group, 1 dynamic, 2 static.
    void (*setNodeInfo)(void* handle, uint32_t nodeType, const char* displayName, uint64_t displayNameLength,
                        const char* matchName, uint64_t matchNameLength);
};

// Hands over a static node (slot 2): its names, its type through ZT_DataTypeCallbacks, then one of the values. Of a
// padded string of an older document the value is its text.
struct ZT_StaticDataCallbacks {
    uint32_t size ZT_OWN_SIZE(ZT_StaticDataCallbacks);
    void (*setNames)(void* handle, const char* displayName, uint64_t displayNameLength, const char* matchName,
                     uint64_t matchNameLength);
    void (*setNumber)(void* handle, double value);
    void (*setString)(void* handle, const char* text, uint64_t length);
    void (*setBoolean)(void* handle, uint8_t value);  // 0 or 1
    void (*setNumberArray)(void* handle, const double* values, uint64_t count);
};

// Hands over a dynamic node (slot 3), followed by its type through ZT_DataTypeCallbacks.
struct ZT_DynamicDataCallbacks {
    uint32_t size ZT_OWN_SIZE(ZT_DynamicDataCallbacks);
    void (*setNames)(void* handle, const char* displayName, uint64_t displayNameLength, const char* matchName,
                     uint64_t matchNameLength);
    // `interpolation`: 1 linear, 2 hold. `maxInterSampleDuration` is empty unless `hasExpectedFrequency` is 1.
    void (*setSampleInfo)(void* handle, const char* sampleSetId, uint64_t sampleSetIdLength, uint32_t interpolation,
                          uint8_t hasExpectedFrequency, uint64_t sampleCount, const char* maxInterSampleDuration,
                          uint64_t maxInterSampleDurationLength);
    // The times of the first and the last sample. Not called for a node without samples, nor when these two cannot be
    // read.
    void (*setTimeSpan)(void* handle, const char* firstTime, uint64_t firstTimeLength, const char* lastTime,
                        uint64_t lastTimeLength);
};

// Hands over samples (slot 4), one call each, in the order asked for. `time` is a time string of the document's form,
// which time_form.h reads.
struct ZT_SampleCallbacks {
    uint32_t size ZT_OWN_SIZE(ZT_SampleCallbacks);
    void (*addNumber)(void* handle, const char* time, uint64_t timeLength, double value);
    void (*addNumberArray)(void* handle, const char* time, uint64_t timeLength, const double* values, uint64_t count);
    void (*addString)(void* handle, const char* time, uint64_t timeLength, const char* text, uint64_t length);
};

// Hands over file information (slot 5): first the names, then the time mode.
struct ZT_FileInfoCallbacks {
    uint32_t size ZT_OWN_SIZE(ZT_FileInfoCallbacks);
    // Frames a second are `frameRateValue` / `frameRateScale`; 0 and 1 when the times of the document are not time
    // codes, or when its frame rate is no fraction of two such numbers. `version` and `creator` are empty when the
    // document has none.
    void (*setFileInfo)(void* handle, uint32_t frameRateValue, uint32_t frameRateScale, const char* version,
                        uint64_t versionLength, const char* creator, uint64_t creatorLength);
    // `timeMode` is a ZT_TimeMode. Of time codes come the frames per second and the drop-frame flag (0 or 1); of UTC
    // the decimals of a second, and 1 when times end in "Z" rather than in an offset; the others are 0.
    void (*setTimeMode)(void* handle, uint32_t timeMode, double framesPerSecond, uint8_t dropFrame,
                        uint64_t precisionLength, uint8_t isGmt);
};

// Hands over video-sync entries (slot 6), one call each: a frame number or a time string.
struct ZT_VideoSyncCallbacks {
    uint32_t size ZT_OWN_SIZE(ZT_VideoSyncCallbacks);
    void (*addFrame)(void* handle, const char* fileName, uint64_t fileNameLength, uint64_t frameNumber);
    void (*addTime)(void* handle, const char* fileName, uint64_t fileNameLength, const char* time, uint64_t timeLength);
};

// Hands over the type of a static or dynamic node (slot 7): the type word, then the properties that the type has.
struct ZT_DataTypeCallbacks {
    uint32_t size ZT_OWN_SIZE(ZT_DataTypeCallbacks);
    void (*setType)(void* handle, const char* type, uint64_t length);  // as in the document, e.g. "numberString"
    // Digit counts are -1 when the document has none.
    void (*setPattern)(void* handle, uint8_t isSigned, int64_t digitsInteger, int64_t digitsDecimal);
    // Once for a number, once for each element of an array; `index` counts from 0.
    void (*setRange)(void* handle, uint64_t index, double occurringMin, double occurringMax, double legalMin,
                     double legalMax);
    // Lengths are -1 when the document has none.
    void (*setStringProperties)(void* handle, int64_t maxLength, int64_t maxDigitsInLength, uint8_t isEventMarker);
    void (*setArrayProperties)(void* handle, int64_t arraySize, uint8_t isPoint);
    void (*addArrayDisplayName)(void* handle, uint64_t index, const char* text, uint64_t length);
};

// Hands over the plug-in modules that were found (of the extensions, slot 9), in the order in which they are asked:
// each folder and its problems, then the modules that were found there, each with its converters, and these with their
// extensions and signatures.
struct ZT_PluginCallbacks {
    uint32_t size ZT_OWN_SIZE(ZT_PluginCallbacks);
    // Where modules are looked for, whether there is such a folder or not: the folders of the environment variable
    // ZENTOR_PLUGIN_PATH, and at last the one beside the library.
    void (*setFolder)(void* listContext, const char* path);
    // `identifier` is the module's own. A module that cannot be used has no converters, and a problem: an error code
    // with its message; else these are 0 and empty. A module that has both is used: a property of its manifest, which
    // the message names, is allowed but hardly meant.
    void (*addModule)(void* listContext, const char* path, const char* identifier, uint32_t problemCode,
                      const char* problem);
    // `isForced`: 1 for a converter that comes before the built-in ones, else 0.
    void (*addConverter)(void* listContext, const char* identifier, const char* name, double version, uint8_t isForced);
    void (*addExtension)(void* listContext, const char* extension);  // without a dot, in lower case
    // What inputs have at a byte offset, one of these.
    void (*addSignature)(void* listContext, uint64_t offset, const char* bytes, uint64_t length);
    // The folder that was handed over last, or one in it, cannot be looked into (codes ZT_PATH_CONVERSION,
    // ZT_FOLDER_OPEN; it is tried again with the next conversion or listing), or is passed over, because its path is
    // not absolute (ZT_PATH_CONVERSION).
    void (*addFolderProblem)(void* listContext, const char* path, uint32_t problemCode, const char* problem);
    // Null: no module is loaded for the listing. Otherwise each module that has converters is, after they were handed
    // over, and stays so like one that was used. `code` 0: it can be used; else ZT_MODULE_LOADING or
    // ZT_PLUGIN_INITIALIZE with the message, and `diagnosis` is for the module's author: what the system's loader says,
    // in the user's language, or what the module's InitializePlugin has done.
    void (*setLoadResult)(void* listContext, uint32_t code, const char* message, const char* diagnosis);
    // Of the converter that was handed over last: the name of a parameter that hosts may give (ZT_HostOptions).
    void (*addParameter)(void* listContext, const char* name);
};

// How the library works for this host. Read at the beginning of each operation; 0 is the default of each.
struct ZT_HostOptions {
    uint32_t size ZT_OWN_SIZE(ZT_HostOptions);
    // 1: OpenFile copies a document that is not open yet to the folder for temporary files first, and all queries read
    // the copy, so that it does not matter what others do to the file afterwards. Codes ZT_TEMP_FOLDER and ZT_TEMP_FILE
    // (no such folder or file), ZT_GENERAL (no room).
    uint8_t privateCopy;
    // 1: OpenFile, of a document that is not open yet, and ConvertFile with `validate` read every sample: its form,
    // time and value, and that no time is before the one in front of it. Code ZT_SAMPLE_DATA with the offset of the
    // first sample that is wrong, ZT_SAMPLE_SET_INFO. Otherwise what is wrong within a set of samples is met by the
    // query that reads it.
    uint8_t checkSamples;
    // 1: OpenFile and ConvertFile refuse to convert what a document would not give back as it went in: texts with a
    // quotation mark, a backslash, a control character or bytes that are no UTF-8, which go into documents as they are,
    // and numbers whose exponent loses zeros. ZT_CONVERSION with the byte offset and the line in the input; of a
    // plug-in's conversion with the byte offset in the document. See `faithful` and `anySize`, too.
    uint8_t strict;
    // 1: OpenFile with an output path puts the document there without reading it: *handler stays null, and there is
    // nothing to close.
    uint8_t unread;
    // 1: OpenFile refuses an output path where there is a file already, also one that has come while it was converting
    // (ZT_FILE_CREATE); otherwise the file is replaced.
    uint8_t newOutput;
    // 1: OpenFile and ConvertFile convert so that what goes in comes back. Texts are escaped as JSON has it (a byte
    // that is no part of UTF-8 is taken for one of Windows-1252); numbers are written with the fewest digits that give
    // the same double, where they are rounded to 16 otherwise and an exponent loses its zeros; end sites of captures
    // become nodes. To readers such a document is one like all others. Escapes in the texts of plug-ins stay. Nothing
    // is left for `strict` to refuse.
    uint8_t faithful;
    // 1: a strict conversion may make a document of more than 1000 bytes for each byte of its input, too. Tables make
    // such documents when their rows are far shorter than their headers.
    uint8_t anySize;
    uint8_t reserved[5];  // 0
    // The converter for every input, whatever its extension and content: its identifier, such as com.orvane.sensor.csv,
    // or the last part of it. Null: the one that the input belongs to. ZT_INVALID_POINTER when there is none.
    const char* converter;
    // Texts "key=value" for the converter, up to a null; null for none. ZT_INVALID_POINTER for a text of another form,
    // ZT_CONVERSION for a parameter that the converter does not have.
    const char* const* parameters;
};

// Kinds of notices.
enum ZT_NoticeKind ZT_UINT32_ENUM {
    ZT_NOTICE_EMPTY_CELLS = 1,       // of a table, in columns of numbers, became 0; missing ones, too
    ZT_NOTICE_SHORT_ROWS = 2,        // have fewer cells than the header has names
    ZT_NOTICE_LONG_ROWS = 3,         // have cells beyond the header, which were left out
    ZT_NOTICE_DELIMITER = 4,         // a table seems to have another one
    ZT_NOTICE_QUOTES = 5,            // cells stand in quotation marks, which became part of them
    ZT_NOTICE_DECIMAL_COMMAS = 6,    // cells look like numbers with a decimal comma
    ZT_NOTICE_TITLE_LINES = 7,       // the line that should have the names looks like a title
    ZT_NOTICE_DATA_AS_NAMES = 8,     // the line that should have the names has numbers
    ZT_NOTICE_OTHER_FORMAT = 9,      // a table looks like a file of another format
    ZT_NOTICE_GROWTH = 10,           // the document is more than 1000 times as large as its input
    ZT_NOTICE_ROUNDED = 11,          // numbers have more digits than the document
    ZT_NOTICE_EXPONENTS = 12,        // numbers lose zeros of their exponents, and become others
    ZT_NOTICE_TEXTS = 13,            // cannot be held as they are: quotation marks, backslashes, control characters
    ZT_NOTICE_NOT_UTF8 = 14,         // texts have bytes that are no UTF-8, and went into the document with them
    ZT_NOTICE_READ_AS_WINDOWS = 15,  // such bytes were taken for Windows-1252
    ZT_NOTICE_NULLS = 16,            // of JSON were left out
    ZT_NOTICE_CHANNELS = 17,         // of a capture that are no positions or rotations were left out
    ZT_NOTICE_END_SITES = 18,        // of a capture were left out
    ZT_NOTICE_FRAMES = 19,           // of a capture are declared and not there
    ZT_NOTICE_FRAME_RATE = 20,       // a capture's frame time was taken for that of another rate
    ZT_NOTICE_OF_CONVERTER = 1000,   // what a plug-in says, in its own words; there may be several of them
    ZT_NOTICE_REASON = 1001,         // why a plug-in refuses the input, in its own words; the failure follows
};

// What hosts can have beyond results (slot 9).
struct ZT_HostExtensions {
    uint32_t size ZT_OWN_SIZE(ZT_HostExtensions);
    const ZT_PluginCallbacks* plugins;
    const ZT_HostOptions* options;
    // How far OpenFile and ConvertFile are, on the thread that called them: several times a second, and once more when
    // only the output has to be put in its place. `done` never falls and is `total` in the end; both are in bytes of
    // the input, over which all steps are spread, and `total` is 0 as long as it is not known. 0 cancels: the operation
    // fails with ZT_CANCELLED and leaves nothing behind, an output that was there before included. `errorContext`: that
    // of the latest CreateZentor_1. The callback may call the library; it may not end what is calling it, nor open
    // what is being opened or written then (ZT_INVALID_POINTER).
    uint8_t (*progress)(void* errorContext, uint64_t done, uint64_t total);
    // What a conversion has changed or left out, or what makes its input look like something else: once for each kind,
    // at the end of the OpenFile or ConvertFile that converted, on the thread that called it; the reason of a plug-in's
    // refusal before that is reported. `kind` is a
    // ZT_NoticeKind, or one that a later library adds; `count` says how often, `offset` (in bytes, from 0) and `line`
    // (from 1) where in the input first; each is -1 when it is not known. `message` is a sentence in the manager's
    // language. The same rules hold as for `progress`.
    void (*notice)(void* errorContext, uint32_t kind, const char* message, uint64_t count, int64_t offset,
                   int64_t line);
};

struct ZT_HostSuite {
    const ZT_DataPathCallbacks* dataPaths;       // slot 0
    const ZT_NodeInfoCallbacks* nodeInfo;        // slot 1
    const ZT_StaticDataCallbacks* staticData;    // slot 2
    const ZT_DynamicDataCallbacks* dynamicData;  // slot 3
    const ZT_SampleCallbacks* samples;           // slot 4
    const ZT_FileInfoCallbacks* fileInfo;        // slot 5
    const ZT_VideoSyncCallbacks* videoSync;      // slot 6
    const ZT_DataTypeCallbacks* dataTypes;       // slot 7
    // slot 8: one supported format. `extension` has no dot and is in lower case.
    void (*addFormat)(void* listContext, const char* extension, const char* displayName);
    const ZT_HostExtensions* extensions;  // slot 9
    // slot 10: the text that GetLocalizedErrorMsg_1 formed. `length` in bytes.
    void (*localizedMessage)(void* hostContext, const char* text, uint64_t length);
    // slot 11: a failure. `extra1` and `extra2` are details, -1 when there is none: the byte offset of a fault in a
    // document; byte offset and line (from 1) of one in a capture or in JSON, and of what a strict conversion refuses
    // in these and in tables (no offset where a table had to be decoded); a system error number of a file operation; or
    // what a plug-in gave, which should be offset and line, too.
    void (*reportError)(void* errorContext, uint32_t code, const char* message, int64_t extra1, int64_t extra2);
};

// The library's own functions for objects that it shares with plug-ins; CreateZentor_1 hands out their table, which is
// always the same and stays as long as the library is loaded. A pointer that is no live object of the library is
// ignored (null from `getInternal`).
struct ZT_LibraryCallbacks {
    void (*acquire)(ZT_SharedObject* object);
    void (*release)(ZT_SharedObject* object);
    void* (*getInternal)(ZT_SharedObject* object);
};

// ---------------------------------------------------------------------------------------------------------------------
// Interfaces. The order of the functions is the order of the slots and never changes.

#ifdef __cplusplus

// The vkjson document that a conversion made, or the file itself when the input was a vkjson document.
struct IVkjsonStream {
    // slot 0: fills the first *count bytes of `buffer` with zero, reads the next bytes of the document into it, at most
    // *count, and returns how many were read: less than asked for at the end, 0 after it and after a failure.
    // *count stays as it is. Codes ZT_INVALID_POINTER (null argument), ZT_FILE_READ.
    virtual uint32_t Read(void* buffer, const uint32_t* count) noexcept = 0;
    // slot 1: copies the whole document to the file `path`, creating it or replacing its content; the position of Read
    // does not change. Saving a document onto itself does nothing. On failure a file that was there before is left
    // empty, and a new one is removed. Codes ZT_INVALID_FILE_PATH, ZT_FILE_PATH_TOO_LARGE, ZT_FILE_NOT_EXIST (not a
    // file), ZT_FILE_OPEN, ZT_FILE_CREATE (cannot be created, or is the stream's input), ZT_FILE_CLOSE, ZT_FILE_READ,
    // ZT_PATH_CONVERSION, ZT_FILE_PERMISSION, ZT_OUT_OF_MEMORY (disk full), ZT_FILE_WRITE.
    virtual ZT_Result SaveTo(const char* path) noexcept = 0;
    // slot 2: the document's path; lives until the stream is released.
    virtual const char* DocumentPath() noexcept = 0;
    // slot 3: the length of the document in bytes.
    virtual uint32_t Size() noexcept = 0;
    // slot 4: how many bytes Read has not handed out yet.
    virtual uint32_t Remaining() noexcept = 0;
    // slot 5: sets the file position back to the first byte. Remaining is left as it is, so after a full read there is
    // still nothing to read; after a partial read, as many bytes as remained. Code ZT_FILE_SEEK.
    virtual ZT_Result Rewind() noexcept = 0;
    // slot 6: for the library. A host releases a stream with IZentor::ReleaseStream; a call by a host does nothing.
    virtual void DeletingDestructor(uint32_t flags) noexcept = 0;
    // slots 7 to 10: the shared-object operations. They count; the stream lives until IZentor::ReleaseStream.
    virtual void Acquire() noexcept = 0;
    virtual void Release() noexcept = 0;
    virtual void* GetInternal() noexcept = 0;
    virtual void DestroyShared(uint32_t flags) noexcept = 0;

protected:
    ~IVkjsonStream() = default;
};

// An open document. Slots 0 to 8 fill records and are for hosts of the library's own toolchain; slots 10 to 18 hand the
// same results to the host suite, piece by piece, with `handle` as their first argument, and are for every host. They
// change nothing, and a failed one leaves the handler as usable as before.
//
// A data path names one node of the outline: an item in brackets for each level, which is an index among the siblings
// from 0 on, or a match name in double quotes: `[0]["data1"]`. It may begin with the root, `["dataOutline"]`, which
// alone names the list of the top-level nodes. Looking a node up takes the same time whatever the number of its
// siblings, but for the first time that a group is asked for a child by name: then all names of the group are read.
//
// A query reads what it needs from the file, and fails with 5 when the file has been written to or otherwise changed
// since it was opened; an option of the host (`privateCopy`) makes queries independent of the file. All fail with 1 for
// a null record or data path and for an empty data path. Queries by data path fail with 33 for a path that
// names no node of the right kind and with 45 for one without its closing bracket. Client forms fail with 21 without a
// host suite.
struct ISensorFileHandler {
    // slot 0: the data paths of the top-level nodes.
    virtual ZT_Result GetRootChildren(ZT_GroupChildren* children) noexcept = 0;
    // slot 1: the data paths of the children of a group; of the top-level nodes when the path is the root alone.
    virtual ZT_Result GetGroupChildren(const char* dataPath, ZT_GroupChildren* children) noexcept = 0;
    // slot 2: kind and names of any node; the root alone is a group with the match name "dataOutline".
    virtual ZT_Result GetGroupChildInfo(const char* dataPath, ZT_GroupChildInfo* info) noexcept = 0;
    // slots 3 and 4: what a static or dynamic node holds.
    virtual ZT_Result GetStaticDataInfo(const char* dataPath, ZT_StaticDataInfo* info) noexcept = 0;
    virtual ZT_Result GetDynamicDataInfo(const char* dataPath, ZT_DynamicDataInfo* info) noexcept = 0;
    // slot 5: the samples of a dynamic node from `start` to `end`, both included; from the latest to the earliest when
    // `start` is after `end`. Takes as long as its result is: nothing else of the samples is read.
    //
    // Times of time codes count from 00:00:00:00, those of UTC from 1970-01-01T00:00:00Z. What a time string of the
    // document cannot say is cut off before the comparison: parts of a frame, decimals that the document does not have.
    // A time after the last time code counts as that one. Where times begin anew, as those of a recording past midnight
    // do, samples of either part that are in the range come, in the order of the document. A label that drop frame
    // leaves out is the frame that counting gives. Code ZT_INVALID_POINTER also for a time with scale 0.
    //
    // Codes: ZT_GENERAL (no sample there), ZT_OUT_OF_MEMORY, ZT_SAMPLE_SET_INFO (by its description in the outline the
    // set of samples ends past the end of the file), ZT_SAMPLES_NOT_FOUND (the node has no samples), ZT_SAMPLE_DATA (a
    // sample is malformed; the first detail is its byte offset).
    virtual ZT_Result GetDynamicSamples(const char* dataPath, ZT_Time start, ZT_Time end,
                                        DynamicDataSampleSet* samples) noexcept = 0;
    // slot 6: the latest sample at or before `time`; of several at one time, the last; where times begin anew, of the
    // part whose times those are. Codes as for slot 5.
    virtual ZT_Result GetDynamicSample(const char* dataPath, ZT_Time time, DynamicDataSampleSet* samples) noexcept = 0;
    // slots 7 and 8
    virtual ZT_Result GetFileInfo(ZT_FileInfo* info) noexcept = 0;
    virtual ZT_Result GetVideoSyncTimeList(ZT_VideoSyncTimeList* list) noexcept = 0;
    // slot 9: for the library. A host closes a handler with IZentor::CloseFile; a call by a host does nothing.
    virtual void DeletingDestructor(uint32_t flags) noexcept = 0;
    // slots 10 to 18: the client forms of slots 0 to 8.
    virtual ZT_Result GetRootChildrenClient(void* handle) noexcept = 0;
    virtual ZT_Result GetGroupChildrenClient(const char* dataPath, void* handle) noexcept = 0;
    virtual ZT_Result GetGroupChildInfoClient(const char* dataPath, void* handle) noexcept = 0;
    virtual ZT_Result GetStaticDataInfoClient(const char* dataPath, void* handle) noexcept = 0;
    virtual ZT_Result GetDynamicDataInfoClient(const char* dataPath, void* handle) noexcept = 0;
    virtual ZT_Result GetDynamicSamplesClient(const char* dataPath, ZT_Time start, ZT_Time end,
                                              void* handle) noexcept = 0;
    virtual ZT_Result GetDynamicSampleClient(const char* dataPath, ZT_Time time, void* handle) noexcept = 0;
    virtual ZT_Result GetFileInfoClient(void* handle) noexcept = 0;
    virtual ZT_Result GetVideoSyncTimeListClient(void* handle) noexcept = 0;

protected:
    ~ISensorFileHandler() = default;
};

// The manager: one for the process, made by CreateZentor_1.
struct IZentor {
    // slot 0: opens a document, or converts a supported file and opens the result. Every fault of the outline and the
    // time information is found now; a report's first detail is its byte offset. A file that is open already gives the
    // same handler again, whatever path with the same extension leads to it, if it would be converted with the same
    // options, and each call needs one CloseFile; a file
    // that has taken its place is another one. *handler is null after a failure, and no file is changed or left behind.
    // For a table (csv, tsv, txt) that cannot be read, the line "ERROR Opening File " and its path go to the host's
    // standard output, here and in ConvertFile.
    //
    // With an output path (null or empty: none) the document is kept there, and takes the place of a file that is there
    // already, once nothing can fail any more. What is kept of a path that is open already are the bytes of the input
    // path itself, converted or not. Output and input being the same file is no failure when the input is a document:
    // nothing is copied.
    //
    // Codes of the arguments and of conversion: those of ConvertFile; and ZT_FILE_NOT_EXIST, ZT_FILE_CREATE (the output
    // is not a file, cannot be written, is the input, or is an open document), ZT_OUTPUT_FOLDER (the output's folder
    // does not exist), ZT_TEMP_FILE, ZT_GENERAL, ZT_RENAME (the converted document cannot be put in the output's
    // place), ZT_OUT_OF_MEMORY (disk full), ZT_FILE_WRITE. Codes of the document: ZT_FILE_STAT, ZT_FILE_OPEN,
    // ZT_GENERAL (it cannot be mapped), ZT_MISSING_PROPERTY to ZT_INVALID_JSON, ZT_DUPLICATE_SAMPLE_ID, ZT_SAMPLE_DATA
    // to ZT_PROPERTY_VALUE, ZT_CONDITIONAL_PROPERTY, ZT_EMPTY_ARRAY, ZT_DYNAMIC_NODE_NOT_PRESENT, ZT_EMPTY_FILE; of a
    // private copy ZT_TEMP_FOLDER, ZT_TEMP_FILE and ZT_GENERAL.
    virtual ZT_Result OpenFile(ISensorFileHandler** handler, const char* inputPath,
                               const char* outputPath) noexcept = 0;
    // slot 1: gives back a handler that OpenFile returned. The last close of a document unmaps it, deletes it when it
    // is a temporary one, and nulls *handler; earlier ones leave *handler as it is. Codes ZT_INVALID_POINTER (also: the
    // last close, out of a callback of the handler's own query), ZT_NO_FILE_OPENED (nothing is open),
    // ZT_INVALID_FILE_HANDLER.
    virtual ZT_Result CloseFile(ISensorFileHandler** handler) noexcept = 0;
    // slot 2: converts a supported file into a document in the folder for temporary files; a vkjson document is taken
    // as it is. `validate` not 0: the document is opened once, and its first fault fails the call with the codes of
    // OpenFile. *stream is null after a failure. The temporary document goes with the stream.
    // Codes ZT_INVALID_POINTER, ZT_INVALID_FILE_PATH, ZT_FILE_PATH_TOO_LARGE, ZT_FILE_NOT_EXIST, ZT_FILE_OPEN,
    // ZT_FILE_READ (also: a document of 4 GiB or more), ZT_PATH_CONVERSION, ZT_FILE_PERMISSION, ZT_TEMP_FOLDER (no
    // folder for temporary files), ZT_TEMP_FILE (none can be created there), ZT_GENERAL, ZT_FORMAT_NOT_SUPPORTED,
    // ZT_CONVERSION (the input cannot be read or converted), ZT_FRAME_TIME (the frame time of a capture), and 1000 +
    // the code of a file operation that failed while the document was written or its samples were kept, with that
    // operation's message (ZT_CONVERTER_OUT_OF_MEMORY: memory or disk full, as the message says).
    virtual ZT_Result ConvertFile(IVkjsonStream** stream, const char* inputPath, uint8_t validate) noexcept = 0;
    // slot 3: releases a stream that ConvertFile returned and deletes its temporary document. Codes ZT_INVALID_POINTER
    // (also: out of a callback of the stream's own operation), ZT_NO_STREAM_CREATED, ZT_INVALID_STREAM.
    virtual ZT_Result ReleaseStream(IVkjsonStream** stream) noexcept = 0;
    // slot 4: for the library. A host lets go of the manager with DestroyZentor_1; a call by a host does nothing.
    virtual void DeletingDestructor(uint32_t flags) noexcept = 0;
    // slots 5 to 8: the shared-object operations. They count; the manager lives until DestroyZentor_1.
    virtual void Acquire() noexcept = 0;
    virtual void Release() noexcept = 0;
    virtual void* GetInternal() noexcept = 0;
    virtual void DestroyShared(uint32_t flags) noexcept = 0;

protected:
    ~IZentor() = default;
};

#else
#include "zentor/c_interfaces.h"
#endif

// ---------------------------------------------------------------------------------------------------------------------
// Exported functions: these five and no others.

#if defined(_WIN32)
#define ZT_EXPORTED
#else
#define ZT_EXPORTED __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

// Hands out the manager through *zentor; calls are counted, and each needs one DestroyZentor_1. The first call after
// loading or after the last DestroyZentor_1 makes the manager: it sets the locale of messages and of the names of
// plug-ins (null: "en_US"), and its `hostTable1` and `hostTable2`, which are for plug-ins and may be null, are those
// that plug-ins get; those of later calls do not count. `errorContext` of the latest call goes with the reports of all
// operations. `suite` is kept if none is kept yet. `libraryCallbacks` may be null. A call that comes while another
// thread destroys the last manager waits for that. Code ZT_INVALID_POINTER when `zentor` is null, or when a plug-in
// calls out of its own end.
ZT_EXPORTED void CreateZentor_1(IZentor** zentor, const void* hostTable1, const void* hostTable2, const char* locale,
                                void* errorContext, const ZT_HostSuite* suite,
                                const ZT_LibraryCallbacks** libraryCallbacks);

// Gives a manager back and nulls *zentor. The last one destroys the manager with all its streams and handlers, deletes
// their temporary documents and unloads plug-ins; messages are in English again then. Code ZT_INVALID_POINTER for a
// null or foreign pointer, and for the last one out of a callback of an operation; the code that a plug-in gave when it
// was ended, after everything has been done.
ZT_EXPORTED void DestroyZentor_1(IZentor** zentor, void* errorContext);

// Calls the suite's `addFormat` once for each supported format, by ascending extension, and then the suite's entries
// for the plug-in modules that were found. Plug-ins are read, and loaded only for `setLoadResult`. `suite` is kept if
// none is yet.
// Names are in the manager's locale; in English while there is no manager.
ZT_EXPORTED void GetSupportedFormats_1(void* listContext, void* errorContext, const ZT_HostSuite* suite);

// Forms the message of `key` with up to four parameters (null: empty) and hands it to the suite's `localizedMessage`. A
// key is a path, "=" and the English text, in which "^1" to "^4" stand for the parameters:
// "$$$/ZTError/FileNotExist=File not exist at input path:^1." The dictionary of the manager's locale is searched for
// what stands before the "="; where it has nothing, or there is no dictionary, the text behind it is taken (none:
// empty).
ZT_EXPORTED void GetLocalizedErrorMsg_1(const char* key, const char* parameter1, const char* parameter2,
                                        const char* parameter3, const char* parameter4, void* hostContext);

// Hands the calling thread's last failure to `callback`: code 0 and "Unknown exception" when there was none since the
// record was cleared. `clear` not 0 clears it. Cannot fail; when the callback lets an exception out, that is the
// thread's last failure then: ZT_UNKNOWN.
ZT_EXPORTED void GetLastException_1(void* context,
                                    void (*callback)(void* context, uint32_t code, const char* message, int64_t extra1,
                                                     int64_t extra2),
                                    uint8_t clear);

#ifdef __cplusplus
}  // extern "C"
#endif

#endif
