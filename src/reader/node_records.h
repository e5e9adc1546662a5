// Fills the records of nodes from validated values.
#pragma once

#include "reader/outline.h"
#include "zentor/records.h"

namespace zentor {

// For null: of the root.
ZT_GroupChildInfo GroupChildInfoOf(const JsonValue* node);
// Code 33 when the node is of another kind.
ZT_StaticDataInfo StaticDataInfoOf(const JsonValue* node);
ZT_DynamicDataInfo DynamicDataInfoOf(const JsonValue* node);
// The same check alone.
const JsonValue& RequireDynamicNode(const JsonValue* node);

}  // namespace zentor
