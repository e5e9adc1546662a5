// The nodes of a document as converters see them.
//
// Texts are zero-terminated UTF-8 and copied; null counts as empty. Every operation with a trailing error record stores
// its error code there and changes nothing when it fails; a null record is allowed. The table of each static kind
// begins with the slots of IVkjsonStaticData_v1, so that a pointer to it may be passed where that interface is asked
// for. A document is built on one thread.
#pragma once

#include <stdint.h>

#include "shared_object.h"

namespace ZT_PLUGIN {

struct IVkjsonDynamicData_v1;

// A digit count or string length that is not known.
inline constexpr uint64_t kUnsetCount = UINT64_MAX;

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
    // Code 2006 when exactly one is unset.
    virtual void SetPattern(uint64_t digitsInteger, uint64_t digitsDecimal, uint8_t isSigned,
                            ZT_ErrorRecord* error) noexcept = 0;
    // Own slot 2: the legal range and a value that it must hold. Minimum = largest finite double with maximum = its
    // negative means "not known": the range is then the value. Codes 2007 (minimum above maximum), 2008 (`value` or the
    // node's value outside, or a bound that is no finite number).
    virtual void SetRange(double legalMinimum, double legalMaximum, double value, ZT_ErrorRecord* error) noexcept = 0;

protected:
    ~IVkjsonStaticDataNum_v1() = default;
};

struct IVkjsonStaticDataString_v1 {
    virtual void Reserved() noexcept = 0;
    virtual ISharedObject* GetSharedObject() noexcept = 0;
    virtual void DeletingDestructor(uint32_t flags) noexcept = 0;
    // Own slot 1: the lengths are written unless unset.
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
    // Own slot 1: replaces the elements; ranges and display names that do not fit the new count are dropped.
    // Code 2008 for an element that is no finite number.
    virtual void SetValues(const double* values, uint64_t count, ZT_ErrorRecord* error) noexcept = 0;
    // Own slot 2: one name for each element, or none. Code 2019 for any other count.
    virtual void SetDisplayNames(const char* const* names, uint64_t count, ZT_ErrorRecord* error) noexcept = 0;
    // Own slot 3: as for a number; unset counts are taken from the widest element.
    virtual void SetPattern(uint64_t digitsInteger, uint64_t digitsDecimal, uint8_t isSigned,
                            ZT_ErrorRecord* error) noexcept = 0;
    // Own slot 4: how many elements there are.
    virtual uint64_t GetArraySize() noexcept = 0;
    // Own slot 5: the legal range of each element, as for a number. Codes 2018 (other than one range for each element),
    // 2007, 2008.
    virtual void SetRanges(const double* minima, const double* maxima, uint64_t count,
                           ZT_ErrorRecord* error) noexcept = 0;
    // Own slot 6: the array is a point in space.
    virtual void SetIsPoint(uint8_t isPoint, ZT_ErrorRecord* error) noexcept = 0;

protected:
    ~IVkjsonStaticDataNumArr_v1() = default;
};

// A group. Children are written in the order in which they were attached. A node is attached once, to a group of its
// own document; the group then holds a reference of its own. Codes: null, attached elsewhere, of another document or (a
// group) above this one: 2001 for dynamic nodes, 2002 for static ones, 2003 for groups; no node of this library: 2016.
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
    // slot 1: finishes the document. 1 when it was written, 0 when it had been finished, or had failed, before.
    // A file failure with code c is reported as c + 1000. Code 2011: the conversion is over.
    virtual uint32_t WriteDocument(ZT_ErrorRecord* error) noexcept = 0;
    // slot 2: replaces the creator. Code 1505 for null.
    virtual void SetCreator(const char* creator, ZT_ErrorRecord* error) noexcept = 0;
    virtual IVkjsonGroup_v1* GetGroup() noexcept = 0;       // slot 3: where children are attached
    virtual ISharedObject* GetSharedObject() noexcept = 0;  // slot 4
    // slot 5: the display name of the root group; it is not written.
    virtual void SetDisplayName(const char* displayName, ZT_ErrorRecord* error) noexcept = 0;
    // slots 6 and 7: the time mode of all samples; the later call counts. Codes 2020 (the header is written already),
    // 2021 (value or scale 0, drop frame at a rate other than 30000/1001 and 60000/1001; precision above 9).
    virtual void SetTimecodeInfo(uint8_t dropFrame, uint32_t frameRateValue, uint32_t frameRateScale,
                                 ZT_ErrorRecord* error) noexcept = 0;
    virtual void SetUtcInfo(uint32_t precisionLength, uint8_t isGmt, ZT_ErrorRecord* error) noexcept = 0;
    // slots 8 and 9: an entry of the video-sync list. Code 2020.
    virtual void AddVideoSyncFrame(const char* fileName, uint32_t frameNumber, ZT_ErrorRecord* error) noexcept = 0;
    virtual void AddVideoSyncTime(const char* fileName, const char* timeString, ZT_ErrorRecord* error) noexcept = 0;
    // slot 10: writes the beginning of the document now instead of with the first samples. Codes as for WriteDocument.
    virtual void WriteHeader(ZT_ErrorRecord* error) noexcept = 0;

protected:
    ~IVkjsonRoot_v1() = default;
};

}  // namespace ZT_PLUGIN
