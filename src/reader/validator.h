// Checks the values of a document against the schema of its version: every property that a node or the time information
// must or may have, its type and its range. The first fault found is raised, with the place in words and as a byte
// offset: codes 28, 32 (groups too deep), 40 to 44 and 47.
#pragma once

#include <string_view>
#include <unordered_set>

#include "reader/value_checks.h"

namespace zentor {

// Hashes and compares nodes by match name, and lets a name stand for its node.
struct NodeNameHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view name) const { return std::hash<std::string_view>()(name); }
    std::size_t operator()(const JsonValue* node) const { return (*this)(TextOf(*FindMember(*node, "matchName"))); }
};
struct NodeNameEqual {
    using is_transparent = void;
    static std::string_view NameOf(std::string_view name) { return name; }
    static std::string_view NameOf(const JsonValue* node) { return TextOf(*FindMember(*node, "matchName")); }
    bool operator()(const auto& a, const auto& b) const { return NameOf(a) == NameOf(b); }
};
// The nodes of an outline; their match names are unique.
using NodesByName = std::unordered_set<const JsonValue*, NodeNameHash, NodeNameEqual>;

// The rules that all versions share.
class ZT_VkjsonValidator {
public:
    virtual ~ZT_VkjsonValidator() = default;

    // "checks" stands at the object or array that is handed over with it.
    void UtcInfo(ValueChecks& checks, const JsonValue& info) const;
    void TimecodeInfo(ValueChecks& checks, const JsonValue& info) const;
    void VideoSyncTimeList(ValueChecks& checks, const JsonValue& list) const;
    // Returns the nodes by their match names. `textLength`: of the outline in the document, in bytes.
    NodesByName DataOutline(ValueChecks& checks, const JsonValue& outline, std::size_t textLength) const;

protected:
    // What distinguishes the versions.
    virtual void StaticDataNode(ValueChecks& checks, const JsonValue& node) const = 0;
    virtual std::string_view DynamicType(ValueChecks& checks, const JsonValue& dataType) const = 0;
    virtual bool AllowsEmptyArrays() const = 0;

    void NumberStringProperties(ValueChecks& checks, const JsonValue& dataType) const;
    void PaddedStringProperties(ValueChecks& checks, const JsonValue& dataType) const;
    void NumberArrayProperties(ValueChecks& checks, const JsonValue& dataType) const;

private:
    struct OutlineWalk;

    void Nodes(OutlineWalk& walk, const JsonValue& nodes) const;
    void Node(OutlineWalk& walk, const JsonValue& node) const;
    void Group(OutlineWalk& walk, const JsonValue& node) const;
    void MatchName(OutlineWalk& walk, const JsonValue& node) const;
    void DynamicDataNode(ValueChecks& checks, const JsonValue& node) const;
    void Pattern(ValueChecks& checks, const JsonValue& properties) const;
    void Range(ValueChecks& checks, const JsonValue& range) const;
    void ArrayRanges(ValueChecks& checks, const JsonValue& properties) const;
    void ArrayDisplayNames(ValueChecks& checks, const JsonValue& properties) const;
    void VideoSyncEntry(ValueChecks& checks, const JsonValue& entry) const;
};

// Documents before version 2: the types of static nodes are those of dynamic ones.
class ZT_VkjsonValidator_v1 final : public ZT_VkjsonValidator {
protected:
    void StaticDataNode(ValueChecks& checks, const JsonValue& node) const override;
    std::string_view DynamicType(ValueChecks& checks, const JsonValue& dataType) const override;
    bool AllowsEmptyArrays() const override { return false; }
};

class ZT_VkjsonValidator_v2 final : public ZT_VkjsonValidator {
protected:
    void StaticDataNode(ValueChecks& checks, const JsonValue& node) const override;
    std::string_view DynamicType(ValueChecks& checks, const JsonValue& dataType) const override;
    bool AllowsEmptyArrays() const override { return true; }
};

}  // namespace zentor
