// Answers what hosts ask of an open document.
#pragma once

#include <memory>

#include "reader/document_bytes.h"
#include "reader/known_samples.h"
#include "reader/node_records.h"
#include "reader/sample_range.h"
#include "reader/vkjson_document.h"
#include "zentor/records.h"

namespace zentor {

// Both arguments outlive it. Every function can fail with 5 (the document has changed) and 34.
class DocumentQueries {
public:
    DocumentQueries(const VkjsonDocument& document, const DocumentBytes& bytes)
        : document_(document), outline_(document.outline), bytes_(bytes) {}

    // The node at the end of a path. Code ZT_DATA_PATH.
    NodeNumber FindNode(const ZT_DataPath& path) const { return outline_.FindNode(bytes_, path); }

    // Calls `take` with the path of each child of a group and how many there are; the path is one object that changes.
    // Code ZT_DATA_PATH.
    template <class Take>
    void ForEachChild(ZT_DataPath parent, Take&& take) const {
        constexpr std::size_t kTextAtOnce = std::size_t{1} << 16;
        const OutlineIndex::Children children = outline_.ChildrenOf(FindNode(parent));
        TextWindow window(bytes_, kTextAtOnce);
        parent.items.emplace_back();
        ZT_DataPathItem& item = parent.items.back();
        for (std::uint64_t i = 0; i < children.count; ++i) {
            item.matchName = outline_.MatchNameOf(window, children.first + i);
            item.index = static_cast<std::int64_t>(i);
            take(parent, children.count);
        }
    }

    ZT_GroupChildInfo GroupChildInfo(NodeNumber node) const;
    // Code ZT_DATA_PATH when the node is of another kind, as of all that follow.
    ZT_StaticDataInfo StaticDataInfo(NodeNumber node) const;
    ZT_DynamicDataInfo DynamicDataInfo(NodeNumber node) const;
    // The samples from `start` to `end`, or back from a later start to an earlier end; scales are not 0. Codes
    // ZT_SAMPLE_SET_INFO, ZT_SAMPLES_NOT_FOUND, ZT_SAMPLE_DATA.
    SampleRange SamplesBetween(NodeNumber node, ZT_Time start, ZT_Time end) const;
    // The latest sample at or before `time`, if any.
    SampleRange SampleAt(NodeNumber node, ZT_Time time) const;
    // Reads every sample of the document; times must not go back. Code ZT_SAMPLE_DATA.
    void CheckSamples() const;

private:
    // Where the samples of a node are; ZT_DATA_PATH for a node of another kind.
    std::shared_ptr<const KnownSamples> SamplesOf(NodeNumber node) const;

    const VkjsonDocument& document_;
    const Outline& outline_;
    const DocumentBytes& bytes_;
    std::unique_ptr<KnownSampleSets> known_ = std::make_unique<KnownSampleSets>();
};

}  // namespace zentor
