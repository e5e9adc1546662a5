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
#include "reader/data_path.h"
#include "reader/node_records.h"
#include "reader/schema_words.h"

namespace {

using namespace zentor;
using namespace zentor_fuzz;

// A path as a host gets and hands back.
const JsonValue* HandBack(const VkjsonDocument& document, const ZT_DataPath& path) {
    return document.outline.FindNode(ParseDataPath(path.ToString()));
}

void CheckInfo(const VkjsonDocument& document, const JsonValue* node) {
    const ZT_GroupChildInfo info = GroupChildInfoOf(node);
    if (info.nodeType == ZT_NODE_STATIC) Require(StaticDataInfoOf(node).matchName == info.matchName);
    if (info.nodeType != ZT_NODE_DYNAMIC) return;
    const ZT_DynamicDataInfo dynamic = DynamicDataInfoOf(node);
    Require(dynamic.matchName == info.matchName);
    Require(document.samples.Sets().contains(dynamic.sampleSetID));
}

struct WalkState {
    const VkjsonDocument& document;
    ZT_DataPath path;
    std::unordered_set<std::string> names;
};

void CheckPaths(WalkState& walk, const JsonValue* node) {
    ZT_DataPathItem& last = walk.path.items.back();
    Require(walk.document.outline.FindNode(walk.path) == node);
    Require(HandBack(walk.document, walk.path) == node);
    if (last.matchName.empty()) return;
    const std::int64_t index = std::exchange(last.index, -1);
    Require(HandBack(walk.document, walk.path) == node);
    last.index = index;
}

// Recursion ends at the limit of groups.
void Walk(WalkState& walk, const JsonValue* group) {
    const JsonValue& children = walk.document.outline.ChildrenOf(group);
    for (JsonSize i = 0; i < children.Size(); ++i) {
        const JsonValue& child = children[i];
        walk.path.items.push_back({std::string(TextOf(*FindMember(child, words::kMatchName))), i});
        Require(walk.names.insert(walk.path.items.back().matchName).second);
        CheckPaths(walk, &child);
        CheckInfo(walk.document, &child);
        if (TypeOf(child) == ZT_NODE_GROUP) Walk(walk, &child);
        walk.path.items.pop_back();
    }
}

// Of a node of another kind there is no such information.
void RequireRefused(ZT_NodeType type, const JsonValue* node) {
    try {
        if (type == ZT_NODE_STATIC) DynamicDataInfoOf(node);
        if (type != ZT_NODE_STATIC) StaticDataInfoOf(node);
    } catch (const ns_sensor::ZT_Exception& failure) {
        return Require(failure.code() == 33);
    }
    Require(false);
}

void Query(const VkjsonDocument& document, std::string_view dataPath) {
    try {
        const JsonValue* const node = document.outline.FindNode(ParseDataPath(dataPath));
        CheckInfo(document, node);
        RequireRefused(GroupChildInfoOf(node).nodeType, node);
    } catch (const ns_sensor::ZT_Exception& failure) {
        Require(failure.code() == 1 || failure.code() == 33 || failure.code() == 45);
    }
}

void OpenAndWalk(std::string_view bytes, ParserChoice choice, std::string_view dataPath) {
    const ExactCopy copy(bytes);
    const std::unique_ptr<VkjsonDocument> document = Open(copy.bytes(), choice);
    if (document == nullptr) return;
    WalkState walk{*document, ParseDataPath("[\"dataOutline\"]"), {}};
    Walk(walk, nullptr);
    Query(*document, dataPath);
    // White space after the end changes nothing, unless a set would end past the file: then it may bring that end in.
    for (const auto& [id, set] : document->samples.Sets()) {
        if (set.state == SampleSet::State::kPastEnd) return;
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
