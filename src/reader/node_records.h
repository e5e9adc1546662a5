// Fills the records of nodes from validated values.
#pragma once

#include "reader/outline.h"
#include "zentor/records.h"

namespace zentor {

ZT_GroupChildInfo GroupChildInfoOf(const NodeValues& node);
// Code ZT_DATA_PATH when the node is of another kind.
ZT_StaticDataInfo StaticDataInfoOf(const NodeValues& node);
ZT_DynamicDataInfo DynamicDataInfoOf(const NodeValues& node);
// The same check alone.
void RequireType(ZT_NodeType found, ZT_NodeType type);

}  // namespace zentor
