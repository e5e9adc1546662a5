// The outline of a document: the tree of its nodes, and the way to each along a data path.
#pragma once

#include "reader/json_value.h"
#include "reader/validator.h"
#include "zentor/records.h"

namespace zentor {

// Values that have been validated.
class Outline {
public:
    Outline() : nodes_(rapidjson::kArrayType) {}
    Outline(JsonDocument nodes, NodesByName byName) : nodes_(std::move(nodes)), byName_(std::move(byName)) {}

    // The node at the end of a path; null for the root alone. Code 33.
    const JsonValue* FindNode(const ZT_DataPath& path) const;
    // The children of a group, of the root for null. Code 33 when the node is not a group.
    const JsonValue& ChildrenOf(const JsonValue* node) const;
    const JsonValue& TopLevelNodes() const { return nodes_; }

private:
    const JsonValue& Child(const JsonValue& siblings, const ZT_DataPathItem& item, std::size_t itemNumber) const;

    JsonDocument nodes_;
    NodesByName byName_;
};

ZT_NodeType TypeOf(const JsonValue& node);

}  // namespace zentor
