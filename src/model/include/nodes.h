// The nodes of a document as converters see them.
//
// Texts are zero-terminated UTF-8 and copied; null counts as empty. Every operation with a trailing error record stores
// its error code there and changes nothing when it fails; a null record is allowed. The table of each static kind
// begins with the slots of IVkjsonStaticData_v1, so that a pointer to it may be passed where that interface is asked
// for; the dynamic kinds begin with those of IVkjsonDynamicData_v1. A document is built on one thread.
//
// What no reader would take, and what would be missing from the document, is refused:
// - Match names, by which data paths find nodes, are one or more ASCII letters and digits, not beginning with a digit
//   (ZT_INVALID_NAME), and unique in the document, as are sample-set identifiers. Display names are free, and may be
//   empty.
// - A document has one root, and groups stand at most 100 deep in it (ZT_INVALID_GROUP). Arrays have elements
//   (ZT_INVALID_STATIC_NODE, ZT_INVALID_DYNAMIC_NODE).
// - Nothing is attached once the document is finished or has failed (ZT_INVALID_DYNAMIC_NODE, ZT_INVALID_STATIC_NODE
//   or ZT_INVALID_GROUP), and samples are added to nodes that belong to it by then (ZT_INVALID_DYNAMIC_NODE from
//   WriteDocument).
// - ZT_NULL_ARGUMENT: a null pointer where values are asked for. ZT_STREAM_NOT_OPEN from any operation: the conversion
// is over.
#pragma once

#include <stdint.h>

#include "shared_object.h"

namespace ZT_PLUGIN {

// A digit count or string length that is not known.
constexpr uint64_t kUnsetCount = UINT64_MAX;

// A static node, of any kind.
struct IVkjsonStaticData_v1 {
    virtual void Reserved() noexcept = 0;                          // slot 1: does nothing
    virtual ISharedObject* GetSharedObject() noexcept = 0;         // slot 2
    virtual void DeletingDestructor(uint32_t flags) noexcept = 0;  // slot 3: the same as ISharedObject::Release

protected:
    ~IVkjsonStaticData_v1() = default;
};

struct IVkjsonStaticDataNum_v1 {
    virtual void Reserved() noexcept = 0;
    virtual ISharedObject* GetSharedObject() noexcept = 0;
    virtual void DeletingDestructor(uint32_t flags) noexcept = 0;
    // Own slot 1: how many digits the value has before and after the point. Both unset: taken from the value.
    // Codes ZT_INCOMPLETE_PATTERN (exactly one is unset), ZT_RANGE_VALUE (more than 1000 digits).
    virtual void SetPattern(uint64_t digitsInteger, uint64_t digitsDecimal, uint8_t isSigned,
                            ZT_ErrorRecord* error) noexcept = 0;
    // Own slot 2: the legal range and a value that it must hold. Minimum = largest finite double with maximum = its
    // negative means "not known": the range is then the value. Codes ZT_RANGE_ORDER (minimum above maximum),
    // ZT_RANGE_VALUE (`value` or the node's value outside, or a bound that is no finite number).
    virtual void SetRange(double legalMinimum, double legalMaximum, double value, ZT_ErrorRecord* error) noexcept = 0;

protected:
    ~IVkjsonStaticDataNum_v1() = default;
};

struct IVkjsonStaticDataString_v1 {
    virtual void Reserved() noexcept = 0;
    virtual ISharedObject* GetSharedObject() noexcept = 0;
    virtual void DeletingDestructor(uint32_t flags) noexcept = 0;
    // Own slot 1: the lengths are written unless unset. Code ZT_RANGE_VALUE for one above 2^53.
    virtual void SetStringProperties(uint64_t maxLength, uint64_t maxDigitsInLength, uint8_t isEventMarker,
                                     ZT_ErrorRecord* error) noexcept = 0;

protected:
    ~IVkjsonStaticDataString_v1() = default;
};

struct IVkjsonStaticDataBool_v1 {
    virtual void Reserved() noexcept = 0;
    virtual ISharedObject* GetSharedObject() noexcept = 0;
    virtual void DeletingDestructor(uint32_t flags) noexcept = 0;

protected:
    ~IVkjsonStaticDataBool_v1() = default;
};

struct IVkjsonStaticDataNumArr_v1 {
    virtual void Reserved() noexcept = 0;
    virtual ISharedObject* GetSharedObject() noexcept = 0;
    virtual void DeletingDestructor(uint32_t flags) noexcept = 0;
    // Own slot 1: replaces the elements; ranges and display names that do not fit the new count are dropped. Without
    // elements the document cannot be written. Codes ZT_INVALID_STATIC_NODE (none), ZT_RANGE_VALUE (one is no finite
    // number), ZT_NULL_ARGUMENT.
    virtual void SetValues(const double* values, uint64_t count, ZT_ErrorRecord* error) noexcept = 0;
    // Own slot 2: one name for each element, or none. Codes ZT_DISPLAY_NAME_COUNT (any other count), ZT_NULL_ARGUMENT.
    virtual void SetDisplayNames(const char* const* names, uint64_t count, ZT_ErrorRecord* error) noexcept = 0;
    // Own slot 3: as for a number; unset counts are taken from the widest element.
    virtual void SetPattern(uint64_t digitsInteger, uint64_t digitsDecimal, uint8_t isSigned,
                            ZT_ErrorRecord* error) noexcept = 0;
    // Own slot 4: how many elements there are.
    virtual uint64_t GetArraySize() noexcept = 0;
    // Own slot 5: the legal range of each element, as for a number. Codes ZT_RANGE_COUNT (other than one range for each
    // element), ZT_RANGE_ORDER, ZT_RANGE_VALUE, ZT_NULL_ARGUMENT.
    virtual void SetRanges(const double* minima, const double* maxima, uint64_t count,
                           ZT_ErrorRecord* error) noexcept = 0;
    // Own slot 6: the array is a point in space.
    virtual void SetIsPoint(uint8_t isPoint, ZT_ErrorRecord* error) noexcept = 0;

protected:
    ~IVkjsonStaticDataNumArr_v1() = default;
};

// A dynamic node, of any kind: a value that changes over time. It is made, initialised, given its properties, attached,
// given its samples in the order of time, and told to write them. Samples are kept in a buffer of at most 1 MiB and
// beyond that in a temporary file, which goes with the node.
struct IVkjsonDynamicData_v1 {
    virtual void Reserved() noexcept = 0;  // slot 1: does nothing
    // slot 2: writes all samples into the document, padded to the widest. 1 when it has, 0 when it had before. A node
    // without samples writes nothing and counts as written. Finishing the document does it for all nodes that have not.
    // Codes ZT_INVALID_DYNAMIC_NODE (not initialised; not attached to a group of the document; an array whose size was
    // never set; the document is finished or has failed), and those of WriteDocument.
    virtual uint32_t WriteSamples(ZT_ErrorRecord* error) noexcept = 0;
    // slot 3: how many samples are expected, a hint; ignored once they are written. What is written is their number.
    virtual void SetSampleCount(uint64_t count, ZT_ErrorRecord* error) noexcept = 0;
    // slot 4: the expected number; the number of samples there are when that is 0 or they are written.
    virtual uint64_t GetSampleCount() noexcept = 0;
    virtual ISharedObject* GetSharedObject() noexcept = 0;         // slot 5
    virtual void DeletingDestructor(uint32_t flags) noexcept = 0;  // slot 6: the same as ISharedObject::Release
    // slot 7: the names of an initialised node, each borrowed until the node goes; null pointers are skipped. 1; 0,
    // with empty texts, before Initialize.
    virtual uint32_t GetNames(const char** matchName, const char** displayName, const char** sampleSetId) noexcept = 0;
    // slot 8: once, before anything else. `interpolation`: 1 linear, 2 hold. `maxInterSampleDuration`, a duration in
    // the form of the document's times, counts with `hasExpectedFrequency` only. Codes ZT_INVALID_NAME (the match name,
    // or no sample-set identifier), ZT_INTERPOLATION, ZT_UNBALANCED_TEXT (square brackets of the identifier that do not
    // balance), ZT_INVALID_DYNAMIC_NODE (again).
    virtual void Initialize(const char* matchName, const char* displayName, const char* sampleSetId,
                            uint64_t sampleCount, uint32_t interpolation, uint8_t hasExpectedFrequency,
                            const char* maxInterSampleDuration, ZT_ErrorRecord* error) noexcept = 0;

protected:
    ~IVkjsonDynamicData_v1() = default;
};

// Samples. All adders need a time mode of the document, and fix it. A sample is not earlier than the one before it. Its
// time is given
// - in seconds, as value / scale: since the start of the day for time codes, since 1970-01-01T00:00:00Z for UTC;
// - the same with a wider value, for UTC times with decimals (milliseconds: the scale is 1000);
// - or as a time string of the document's form.
// What the form cannot say (parts of a frame, further decimals) is cut off. Adders return 1, or 0 after a failure.
// Codes: ZT_INVALID_DYNAMIC_NODE (not initialised, written already, the document is finished), ZT_TIME_MODE_INVALID (no
// time mode), ZT_SAMPLE_TIME (no time of the document's form, or one before its predecessor), ZT_RANGE_VALUE (no finite
// number, or one outside the legal range), and 1000 + the code of an operation on the temporary file
// (ZT_CONVERTER_OUT_OF_MEMORY: memory or disk full).

// A number that changes, written as "numberString".
struct IVkjsonDynamicDataNum_v1 {
    virtual void Reserved() noexcept = 0;
    virtual uint32_t WriteSamples(ZT_ErrorRecord* error) noexcept = 0;
    virtual void SetSampleCount(uint64_t count, ZT_ErrorRecord* error) noexcept = 0;
    virtual uint64_t GetSampleCount() noexcept = 0;
    virtual ISharedObject* GetSharedObject() noexcept = 0;
    virtual void DeletingDestructor(uint32_t flags) noexcept = 0;
    virtual uint32_t GetNames(const char** matchName, const char** displayName, const char** sampleSetId) noexcept = 0;
    virtual void Initialize(const char* matchName, const char* displayName, const char* sampleSetId,
                            uint64_t sampleCount, uint32_t interpolation, uint8_t hasExpectedFrequency,
                            const char* maxInterSampleDuration, ZT_ErrorRecord* error) noexcept = 0;
    // Own slot 1.
    virtual uint32_t AddSample(int32_t timeValue, uint32_t timeScale, double value, ZT_ErrorRecord* error) noexcept = 0;
    // Own slot 2: digits before and after the point, and whether there is a sign; the samples widen it. Both unset:
    // taken from the samples. Codes ZT_INCOMPLETE_PATTERN (exactly one is unset), ZT_RANGE_VALUE (more than 1000
    // digits), ZT_INVALID_DYNAMIC_NODE (the samples are written).
    virtual void SetPattern(uint64_t digitsInteger, uint64_t digitsDecimal, uint8_t isSigned,
                            ZT_ErrorRecord* error) noexcept = 0;
    // Own slot 3: the legal range and a value that it must hold. Minimum = largest finite double with maximum = its
    // negative means "not known": the range is then the one that the samples occupy. Codes ZT_RANGE_ORDER (minimum
    // above maximum), ZT_RANGE_VALUE (`value` or a sample outside, or a bound that is no finite number).
    virtual void SetRange(double legalMinimum, double legalMaximum, double value, ZT_ErrorRecord* error) noexcept = 0;
    // Own slots 4 and 5.
    virtual uint32_t AddSampleAtTicks(int64_t ticks, uint32_t ticksPerSecond, double value,
                                      ZT_ErrorRecord* error) noexcept = 0;
    virtual uint32_t AddSampleAtTimeString(const char* timeString, double value, ZT_ErrorRecord* error) noexcept = 0;

protected:
    ~IVkjsonDynamicDataNum_v1() = default;
};

// The adder of a dynamic number for values that are decimal texts already, such as the cells of a table. Faster than
// reading and writing them as doubles, with the same outcome. ZT_HostServices::numberTexts gives it.
struct IVkjsonNumberTexts_v1 {
    // Slot 1: the whole of `text`, `size` bytes, is a number: an optional "-", digits with an optional point and an
    // optional exponent. Result and codes as for AddSampleAtTicks; also ZT_RANGE_VALUE when it is no such number.
    virtual uint32_t AddSampleAtTicks(int64_t ticks, uint32_t ticksPerSecond, const char* text, uint64_t size,
                                      ZT_ErrorRecord* error) noexcept = 0;

protected:
    ~IVkjsonNumberTexts_v1() = default;
};

// An array of numbers that change, written as "numberStringArray". Its size is set first, and before the first sample.
struct IVkjsonDynamicDataNumArr_v1 {
    virtual void Reserved() noexcept = 0;
    virtual uint32_t WriteSamples(ZT_ErrorRecord* error) noexcept = 0;
    virtual void SetSampleCount(uint64_t count, ZT_ErrorRecord* error) noexcept = 0;
    virtual uint64_t GetSampleCount() noexcept = 0;
    virtual ISharedObject* GetSharedObject() noexcept = 0;
    virtual void DeletingDestructor(uint32_t flags) noexcept = 0;
    virtual uint32_t GetNames(const char** matchName, const char** displayName, const char** sampleSetId) noexcept = 0;
    virtual void Initialize(const char* matchName, const char* displayName, const char* sampleSetId,
                            uint64_t sampleCount, uint32_t interpolation, uint8_t hasExpectedFrequency,
                            const char* maxInterSampleDuration, ZT_ErrorRecord* error) noexcept = 0;
    // Own slot 1: the elements, as many as the array has. Also ZT_DIMENSION_COUNT (any other number), ZT_NULL_ARGUMENT.
    virtual uint32_t AddSample(int32_t timeValue, uint32_t timeScale, const double* values, uint64_t count,
                               ZT_ErrorRecord* error) noexcept = 0;
    // Own slot 2: as for a number; one pattern for all elements.
    virtual void SetPattern(uint64_t digitsInteger, uint64_t digitsDecimal, uint8_t isSigned,
                            ZT_ErrorRecord* error) noexcept = 0;
    // Own slot 3: how many elements there are, from 1 to 65536; drops ranges and names. Codes ZT_DIMENSION_COUNT,
    // ZT_INVALID_DYNAMIC_NODE (there are samples).
    virtual void SetArraySize(uint64_t size, ZT_ErrorRecord* error) noexcept = 0;
    // Own slot 4: the legal range of the next element, as for a number. Codes ZT_RANGE_COUNT (all have one),
    // ZT_RANGE_ORDER, ZT_RANGE_VALUE, ZT_INVALID_DYNAMIC_NODE (there are samples).
    virtual void AddRange(double legalMinimum, double legalMaximum, ZT_ErrorRecord* error) noexcept = 0;
    // Own slot 5: the display name of the next element; either all elements have one in the end, or none is written.
    // Code ZT_DISPLAY_NAME_COUNT (all have one).
    virtual void AddDisplayName(const char* displayName, ZT_ErrorRecord* error) noexcept = 0;
    // Own slot 6: the array is a point in space.
    virtual void SetIsPoint(uint8_t isPoint, ZT_ErrorRecord* error) noexcept = 0;
    // Own slot 7: elements have a sign even if none is negative. Code ZT_INVALID_DYNAMIC_NODE (the samples are
    // written).
    virtual void SetIsSigned(uint8_t isSigned, ZT_ErrorRecord* error) noexcept = 0;
    // Own slots 8 and 9.
    virtual uint32_t AddSampleAtTicks(int64_t ticks, uint32_t ticksPerSecond, const double* values, uint64_t count,
                                      ZT_ErrorRecord* error) noexcept = 0;
    virtual uint32_t AddSampleAtTimeString(const char* timeString, const double* values, uint64_t count,
                                           ZT_ErrorRecord* error) noexcept = 0;

protected:
    ~IVkjsonDynamicDataNumArr_v1() = default;
};

// A text that changes, written as "paddedString". Lengths are in bytes.
struct IVkjsonDynamicDataString_v1 {
    virtual void Reserved() noexcept = 0;
    virtual uint32_t WriteSamples(ZT_ErrorRecord* error) noexcept = 0;
    virtual void SetSampleCount(uint64_t count, ZT_ErrorRecord* error) noexcept = 0;
    virtual uint64_t GetSampleCount() noexcept = 0;
    virtual ISharedObject* GetSharedObject() noexcept = 0;
    virtual void DeletingDestructor(uint32_t flags) noexcept = 0;
    virtual uint32_t GetNames(const char** matchName, const char** displayName, const char** sampleSetId) noexcept = 0;
    virtual void Initialize(const char* matchName, const char* displayName, const char* sampleSetId,
                            uint64_t sampleCount, uint32_t interpolation, uint8_t hasExpectedFrequency,
                            const char* maxInterSampleDuration, ZT_ErrorRecord* error) noexcept = 0;
    // Own slot 1. Also ZT_UNBALANCED_TEXT for a text whose square brackets do not balance, which no reader could pass
    // over.
    virtual uint32_t AddSample(int32_t timeValue, uint32_t timeScale, const char* text,
                               ZT_ErrorRecord* error) noexcept = 0;
    // Own slot 2: the longest text and the digits of its length; the samples widen both. Code ZT_RANGE_VALUE for a
    // length above 2^24 or more than 20 digits, ZT_INVALID_DYNAMIC_NODE when the samples are written.
    virtual void SetStringProperties(uint64_t maxLength, uint64_t maxDigitsInLength, uint8_t isEventMarker,
                                     ZT_ErrorRecord* error) noexcept = 0;
    // Own slots 3 and 4.
    virtual uint32_t AddSampleAtTicks(int64_t ticks, uint32_t ticksPerSecond, const char* text,
                                      ZT_ErrorRecord* error) noexcept = 0;
    virtual uint32_t AddSampleAtTimeString(const char* timeString, const char* text,
                                           ZT_ErrorRecord* error) noexcept = 0;

protected:
    ~IVkjsonDynamicDataString_v1() = default;
};

// A group. Children are written in the order in which they were attached. A node is attached once, to a group of its
// own document; the group then holds a reference of its own. Codes: null, attached elsewhere, of another document, not
// initialised, (a group) above this one or too deep below it, with a match name or sample-set identifier that the
// document has already, or too late: ZT_INVALID_DYNAMIC_NODE for dynamic nodes, ZT_INVALID_STATIC_NODE for static ones,
// ZT_INVALID_GROUP for groups; no node of this library: ZT_FOREIGN_OBJECT.
struct IVkjsonGroup_v1 {
    // Slots 1 to 3: the child given as its shared object.
    virtual void AddDynamicDataShared(ISharedObject* child, ZT_ErrorRecord* error) noexcept = 0;
    virtual void AddStaticDataShared(ISharedObject* child, ZT_ErrorRecord* error) noexcept = 0;
    virtual void AddGroupShared(ISharedObject* child, ZT_ErrorRecord* error) noexcept = 0;
    virtual ISharedObject* GetSharedObject() noexcept = 0;  // slot 4
    // Slots 5 to 7: the child given as its interface.
    virtual void AddDynamicData(IVkjsonDynamicData_v1* child, ZT_ErrorRecord* error) noexcept = 0;
    virtual void AddStaticData(IVkjsonStaticData_v1* child, ZT_ErrorRecord* error) noexcept = 0;
    virtual void AddGroup(IVkjsonGroup_v1* child, ZT_ErrorRecord* error) noexcept = 0;

protected:
    ~IVkjsonGroup_v1() = default;
};

// The root of a document.
struct IVkjsonRoot_v1 {
    // slot 1: finishes the document. 1 when it was written, 0 when it had been finished, or had failed, before. After a
    // failure it will not be written any more. A file failure with code c is reported as c + 1000. Codes
    // ZT_INVALID_DYNAMIC_NODE (there are samples of a node that is not attached to a group of the document, whether the
    // node is still there or not; a dynamic array without a size), ZT_INVALID_STATIC_NODE (a static array without
    // elements), and those of WriteHeader.
    virtual uint32_t WriteDocument(ZT_ErrorRecord* error) noexcept = 0;
    // slot 2: replaces the creator. Code ZT_EMPTY_CREATOR for null.
    virtual void SetCreator(const char* creator, ZT_ErrorRecord* error) noexcept = 0;
    virtual IVkjsonGroup_v1* GetGroup() noexcept = 0;       // slot 3: where children are attached
    virtual ISharedObject* GetSharedObject() noexcept = 0;  // slot 4
    // slot 5: the display name of the root group; it is not written.
    virtual void SetDisplayName(const char* displayName, ZT_ErrorRecord* error) noexcept = 0;
    // slots 6 and 7: the time mode of all samples; the later call counts. Codes ZT_TIME_MODE_FIXED (the header is
    // written already, or there is a sample), ZT_TIME_MODE_INVALID (value or scale 0, a rate above 1000, drop frame at
    // a rate other than 29.97 and 59.94, which 30000/1001 and 60000/1001 are and 2997/100 and 5994/100 are taken for;
    // precision above 9).
    virtual void SetTimecodeInfo(uint8_t dropFrame, uint32_t frameRateValue, uint32_t frameRateScale,
                                 ZT_ErrorRecord* error) noexcept = 0;
    virtual void SetUtcInfo(uint32_t precisionLength, uint8_t isGmt, ZT_ErrorRecord* error) noexcept = 0;
    // slots 8 and 9: an entry of the video-sync list, which ties a moment of a video to the times of the document: the
    // number of a frame, or a time string. The list is written in order, into a document that has samples. Code
    // ZT_TIME_MODE_FIXED.
    virtual void AddVideoSyncFrame(const char* fileName, uint32_t frameNumber, ZT_ErrorRecord* error) noexcept = 0;
    virtual void AddVideoSyncTime(const char* fileName, const char* timeString, ZT_ErrorRecord* error) noexcept = 0;
    // slot 10: writes the beginning of the document now instead of with the first samples; once. Codes
    // ZT_WRITER_SYNC_TIME (a time string of the video-sync list is none of the document's time mode), ZT_INVALID_GROUP
    // (the document has failed), and those of file failures.
    virtual void WriteHeader(ZT_ErrorRecord* error) noexcept = 0;

protected:
    ~IVkjsonRoot_v1() = default;
};

}  // namespace ZT_PLUGIN
