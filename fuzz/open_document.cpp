// Fuzzing: whatever the bytes of a document are, opening it ends in an error or in an outline that can be walked.
//
// The rest of an input is a data path.
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>

#include "document.h"
#include "open_text.h"

namespace {

using namespace zentor;
using namespace zentor_fuzz;
using zentor_test::OpenText;

// A path as a host gets and hands back.
NodeNumber HandBack(const OpenText& document, const ZT_DataPath& path) { return document.Find(path.ToString()); }

void CheckInfo(const OpenText& document, NodeNumber node) {
    const ZT_GroupChildInfo info = document.Child(node);
    if (info.nodeType == ZT_NODE_STATIC) Require(document.Static(node).matchName == info.matchName);
    if (info.nodeType == ZT_NODE_DYNAMIC) Require(document.Dynamic(node).matchName == info.matchName);
}

struct WalkState {
    const OpenText& document;
    ZT_DataPath path;
    std::unordered_set<std::string> names;
};

void CheckPaths(WalkState& walk, NodeNumber node) {
    ZT_DataPathItem& last = walk.path.items.back();
    Require(walk.document.queries().FindNode(walk.path) == node);
    Require(HandBack(walk.document, walk.path) == node);
    if (last.matchName.empty()) return;
    const std::int64_t index = std::exchange(last.index, -1);
    Require(HandBack(walk.document, walk.path) == node);
    last.index = index;
}

// Recursion ends at the limit of groups.
void Walk(WalkState& walk, NodeNumber group) {
    const OutlineIndex::Children children = walk.document.index().ChildrenOf(group);
    for (std::uint64_t i = 0; i < children.count; ++i) {
        const NodeNumber child = children.first + i;
        walk.path.items.push_back({walk.document.Child(child).matchName, static_cast<std::int64_t>(i)});
        Require(walk.names.insert(walk.path.items.back().matchName).second);
        CheckPaths(walk, child);
        CheckInfo(walk.document, child);
        if (walk.document.index().TypeOf(child) == ZT_NODE_GROUP) Walk(walk, child);
        walk.path.items.pop_back();
    }
}

// Of a node of another kind there is no such information.
void RequireRefused(const OpenText& document, NodeNumber node) {
    try {
        if (document.index().TypeOf(node) == ZT_NODE_STATIC) {
            document.Dynamic(node);
        } else {
            document.Static(node);
        }
    } catch (const ns_sensor::ZT_Exception& failure) {
        return Require(failure.code() == 33);
    }
    Require(false);
}

void Query(const OpenText& document, std::string_view dataPath) {
    try {
        const NodeNumber node = document.Find(dataPath);
        CheckInfo(document, node);
        RequireRefused(document, node);
    } catch (const ns_sensor::ZT_Exception& failure) {
        Require(failure.code() == 1 || failure.code() == 33 || failure.code() == 45);
    }
}

void OpenAndWalk(std::string_view bytes, ParserChoice choice, std::string_view dataPath) {
    const ExactCopy copy(bytes);
    std::unique_ptr<VkjsonDocument> read = Open(copy.bytes(), choice);
    if (read == nullptr) return;
    const OpenText document(copy.bytes(), std::move(read));
    WalkState walk{document, ParseDataPath("[\"dataOutline\"]"), {}};
    Walk(walk, kRootNode);
    Query(document, dataPath);
    // White space after the end changes nothing, unless a set would end past the file: then it may bring that end in.
    for (std::uint64_t number = 0; number < document.index().DynamicCount(); ++number) {
        if (document->samples.PlaceOf(number).state == SamplePlace::State::kPastEnd) return;
    }
    const ExactCopy longer(std::string(bytes) + ' ');
    Require(Open(longer.bytes(), choice) != nullptr);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const Input input({reinterpret_cast<const char*>(data), size});
    OpenAndWalk(input.document, input.choice, input.rest);
    return 0;
}
