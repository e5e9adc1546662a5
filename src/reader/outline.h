// The outline of an open document: the way to each node along a data path, and what the text of a node says, read anew
// for each query. Nothing that is kept depends on the document's bytes staying as they are.
#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <string>

#include "reader/json_value.h"
#include "reader/name_index.h"
#include "reader/node_reader.h"
#include "reader/outline_index.h"
#include "reader/sample_set.h"
#include "reader/text_window.h"
#include "reader/validator.h"
#include "zentor/records.h"

namespace zentor {

// What one node says; the values are valid.
class NodeValues {
public:
    explicit NodeValues(const DocumentBytes& bytes)
        : window_(bytes, kUsualNode), pool_(memory_.data(), memory_.size()) {}

    bool IsRoot() const { return bytes_.empty(); }
    ZT_NodeType type() const { return type_; }
    // An object; not of the root.
    const JsonValue& values() const { return values_; }
    // The text of a member as it stands in the document.
    std::string_view TextOfMember(std::string_view key) const { return text_.TextOfMember(bytes_, key); }

private:
    friend class Outline;

    static constexpr std::size_t kUsualNode = 2048;

    TextWindow window_;
    std::array<char, 4096> memory_;
    JsonPool pool_;
    JsonDocument values_{&pool_};
    NodeText text_;
    std::string joined_;  // of a group that goes on after its children
    std::string_view bytes_;
    ZT_NodeType type_ = ZT_NODE_GROUP;
};

class Outline {
public:
    // `validator` lives as long as the library.
    Outline(OutlineIndex index, const ZT_VkjsonValidator& validator)
        : index_(std::move(index)), validator_(&validator), names_(std::make_unique<NameIndex>()) {}
    Outline() = default;

    const OutlineIndex& index() const { return index_; }

    // The node at the end of a path. Codes ZT_FILE_STAT, ZT_DATA_PATH.
    NodeNumber FindNode(const DocumentBytes& bytes, const ZT_DataPath& path) const;
    // The children of a group or the root. Code ZT_DATA_PATH when the node is neither.
    OutlineIndex::Children ChildrenOf(NodeNumber node) const;
    // Codes ZT_FILE_STAT (the document does not say there what it said when it was opened), ZT_OUT_OF_MEMORY.
    void Read(NodeNumber node, NodeValues& values) const;
    // Looks for it near where the window is. Codes ZT_FILE_STAT, ZT_OUT_OF_MEMORY.
    std::string MatchNameOf(TextWindow& window, NodeNumber node) const;

    // What the outline says of the set of a dynamic node, by its number. Codes ZT_FILE_STAT, ZT_OUT_OF_MEMORY.
    SampleSet SampleSetOf(const DocumentBytes& bytes, std::uint64_t dynamicNumber) const;

private:
    NodeNumber Child(const DocumentBytes& bytes, NodeNumber group, const ZT_DataPathItem& item,
                     std::size_t itemNumber) const;
    static void FindText(NodeValues& values, std::uint64_t offset, std::optional<std::uint64_t> continuation);
    void BuildValues(NodeValues& values) const;

    OutlineIndex index_;
    const ZT_VkjsonValidator* validator_ = nullptr;
    std::unique_ptr<NameIndex> names_;
};

}  // namespace zentor
