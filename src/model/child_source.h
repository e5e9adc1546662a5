// Where the children of a group come from while the document is written.
#pragma once

#include <optional>

#include "model/node_values.h"
#include "model/shared_object_impl.h"

namespace ZT_PLUGIN {

class IVkjsonGroup_I;

// One child: a static node, unless one of the others is set: a group, a dynamic node, or a group that is nothing but
// the names of `node`.
struct Child {
    StaticNodeView node;
    Owner<IVkjsonGroup_I> group;
    std::optional<DynamicNodeView> dynamic;
    bool opensGroup = false;
};

// Gives the children of one group, one at a time, in order. A converter whose input holds very many nodes makes each of
// them only when it is asked for, so that memory follows the input and not the number of nodes. What a child borrows
// lives until the next call.
class ChildSource {
public:
    virtual ~ChildSource() = default;
    // False after the last child. After a child that opens a group come the children of that group, up to a false of
    // their own.
    virtual bool Next(Child& child) = 0;
};

}  // namespace ZT_PLUGIN
