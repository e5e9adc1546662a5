// Checks the values of a document against the schema of its version: every property that a node or the time information
// must or may have, its type and its range. The first fault found is raised, with the place in words and as a byte
// offset: ZT_MISSING_PROPERTY, ZT_INVALID_JSON (groups too deep), ZT_DUPLICATE_MATCH_NAME to ZT_PROPERTY_VALUE and
// ZT_EMPTY_ARRAY.
#pragma once

#include <string_view>

#include "reader/value_checks.h"
#include "zentor/records.h"

namespace zentor {

// The rules that all versions share.
class ZT_VkjsonValidator {
public:
    virtual ~ZT_VkjsonValidator() = default;

    // "checks" stands at the object or array that is handed over with it.
    void UtcInfo(ValueChecks& checks, const JsonValue& info) const;
    void TimecodeInfo(ValueChecks& checks, const JsonValue& info) const;
    void VideoSyncTimeList(ValueChecks& checks, const JsonValue& list) const;
    // What a node of any kind has: its kind, which is returned, and its names. A match name has to be unique besides.
    ZT_NodeType NodeHead(const ValueChecks& checks, const JsonValue& node) const;
    // What else a static or a dynamic node has.
    void NodeBody(ValueChecks& checks, const JsonValue& node, ZT_NodeType type) const;
    // Whether groups may be empty.
    virtual bool AllowsEmptyArrays() const = 0;

protected:
    // What distinguishes the versions.
    virtual void StaticDataNode(ValueChecks& checks, const JsonValue& node) const = 0;
    virtual std::string_view DynamicType(ValueChecks& checks, const JsonValue& dataType) const = 0;

    void NumberStringProperties(ValueChecks& checks, const JsonValue& dataType) const;
    void PaddedStringProperties(ValueChecks& checks, const JsonValue& dataType) const;
    void NumberArrayProperties(ValueChecks& checks, const JsonValue& dataType) const;

private:
    void DynamicDataNode(ValueChecks& checks, const JsonValue& node) const;
    void Pattern(ValueChecks& checks, const JsonValue& properties) const;
    void Range(ValueChecks& checks, const JsonValue& range) const;
    void ArrayRanges(ValueChecks& checks, const JsonValue& properties) const;
    void ArrayDisplayNames(ValueChecks& checks, const JsonValue& properties) const;
    void VideoSyncEntry(ValueChecks& checks, const JsonValue& entry) const;
};

// Documents before version 2: the types of static nodes are those of dynamic ones.
class ZT_VkjsonValidator_v1 final : public ZT_VkjsonValidator {
public:
    bool AllowsEmptyArrays() const override { return false; }

protected:
    void StaticDataNode(ValueChecks& checks, const JsonValue& node) const override;
    std::string_view DynamicType(ValueChecks& checks, const JsonValue& dataType) const override;
};

class ZT_VkjsonValidator_v2 final : public ZT_VkjsonValidator {
public:
    bool AllowsEmptyArrays() const override { return true; }

protected:
    void StaticDataNode(ValueChecks& checks, const JsonValue& node) const override;
    std::string_view DynamicType(ValueChecks& checks, const JsonValue& dataType) const override;
};

}  // namespace zentor
