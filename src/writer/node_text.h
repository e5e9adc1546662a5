// The text of nodes and of their property objects.
#pragma once

#include "model/node_values.h"
#include "writer/text_buffer.h"

namespace zentor {

// A group up to and with the "[" before its children.
void AppendGroupStart(TextBuffer& text, std::string_view matchName, std::string_view displayName);

// A whole static node.
void AppendStaticNode(TextBuffer& text, const ZT_PLUGIN::StaticNodeView& node);

// A whole dynamic node.
void AppendDynamicNode(TextBuffer& text, const ZT_PLUGIN::DynamicNodeView& node);

}  // namespace zentor
