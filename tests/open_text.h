// A document in memory, opened, and what hosts ask of it.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "errors/raise.h"
#include "reader/data_path.h"
#include "reader/document_queries.h"
#include "reader/parser.h"

namespace zentor_test {

// Bytes of somebody else's.
class MemoryBytes final : public zentor::DocumentBytes {
public:
    explicit MemoryBytes(std::string_view bytes) : bytes_(bytes) {}

    std::uint64_t Size() const override { return bytes_.size(); }
    void CheckUnchanged() const override {}
    void Read(std::uint64_t offset, char* to, std::size_t count) const override {
        if (offset > bytes_.size() || count > bytes_.size() - offset) zentor::Raise(zentor::kCorruptFile);
        bytes_.copy(to, count, offset);
    }

private:
    std::string_view bytes_;
};

// `text` outlives it.
class OpenText {
public:
    OpenText(std::string_view text, zentor::ParserChoice choice)
        : OpenText(text, zentor::ParseDocument(text, choice)) {}
    OpenText(std::string_view text, std::unique_ptr<zentor::VkjsonDocument> document)
        : bytes_(text), document_(std::move(document)), queries_(*document_, bytes_) {}

    const zentor::VkjsonDocument& document() const { return *document_; }
    const zentor::VkjsonDocument* operator->() const { return document_.get(); }
    const zentor::OutlineIndex& index() const { return document_->outline.index(); }
    const zentor::DocumentBytes& bytes() const { return bytes_; }
    const zentor::DocumentQueries& queries() const { return queries_; }

    zentor::NodeNumber Find(std::string_view path) const { return queries_.FindNode(zentor::ParseDataPath(path)); }
    ZT_GroupChildInfo Child(zentor::NodeNumber node) const { return queries_.GroupChildInfo(node); }
    ZT_StaticDataInfo Static(zentor::NodeNumber node) const { return queries_.StaticDataInfo(node); }
    ZT_DynamicDataInfo Dynamic(zentor::NodeNumber node) const { return queries_.DynamicDataInfo(node); }

    // Calls `visit` with each dynamic node below a group.
    template <class Visit>
    void ForEachDynamic(Visit&& visit, zentor::NodeNumber group = zentor::kRootNode) const {
        const zentor::OutlineIndex::Children children = index().ChildrenOf(group);
        for (zentor::NodeNumber node = children.first; node != children.first + children.count; ++node) {
            if (index().TypeOf(node) == ZT_NODE_GROUP) ForEachDynamic(visit, node);
            if (index().TypeOf(node) == ZT_NODE_DYNAMIC) visit(node);
        }
    }
    // The dynamic node of a set of samples; the root when there is none.
    zentor::NodeNumber NodeOfSet(std::string_view id) const {
        zentor::NodeNumber found = zentor::kRootNode;
        ForEachDynamic([&](zentor::NodeNumber node) {
            if (Dynamic(node).sampleSetID == id) found = node;
        });
        return found;
    }
    std::vector<ZT_Sample> Samples(std::string_view id, ZT_Time start = {0, 1}, ZT_Time end = {86400, 1}) const {
        return queries_.SamplesBetween(NodeOfSet(id), start, end).ReadAll();
    }

private:
    MemoryBytes bytes_;
    std::unique_ptr<zentor::VkjsonDocument> document_;
    zentor::DocumentQueries queries_;
};

}  // namespace zentor_test
