#include "commands/commands.h"
#include "document_times.h"
#include "json_output.h"
#include "node_path.h"
#include "standard_output.h"
#include "text_output.h"

namespace zentor_cli {

namespace {

std::string Describe(const Leaf& node) {
    std::string text = std::to_string(node.sampleCount) + " samples";
    if (!node.timeSpan.first.empty()) text += ", " + Describe(node.timeSpan);
    return text;
}

// Groups of a document do not stand deeper in each other than the library allows.
void PrintNodes(const Document& document, const std::string& path, std::size_t depth) {
    const Children children = document.ChildrenOf(path);
    for (std::uint64_t i = 0; i < children.count; ++i) {
        const std::string child = children.PathOf(i);
        const NodeNames names = document.Names(child);
        std::string line(2 * depth, ' ');
        line += child + ' ' + NameOf(names.kind) + ' ' + Printable(names.matchName);
        if (!names.displayName.empty()) line += " \"" + Printable(names.displayName) + '"';
        if (names.kind == NodeKind::kDynamic) line += ' ' + Describe(document.DynamicNode(child));
        WriteOutput(line + '\n');
        if (names.kind == NodeKind::kGroup) PrintNodes(document, child, depth + 1);
    }
}

void WriteNodes(const Document& document, const std::string& path, JsonOutput& json) {
    json.BeginArray();
    const Children children = document.ChildrenOf(path);
    for (std::uint64_t i = 0; i < children.count; ++i) {
        const std::string child = children.PathOf(i);
        const NodeNames names = document.Names(child);
        json.BeginObject();
        json.Member("path", child);
        json.Member("index", i);
        json.Member("type", NameOf(names.kind));
        json.Member("matchName", names.matchName);
        json.Member("displayName", names.displayName);
        if (names.kind == NodeKind::kDynamic) {
            const Leaf node = document.DynamicNode(child);
            json.Member("sampleCount", node.sampleCount);
            WriteMembers(json, node.timeSpan);
        }
        if (names.kind == NodeKind::kGroup) {
            json.Key("children");
            WriteNodes(document, child, json);
        }
        json.EndObject();
    }
    json.EndArray();
}

}  // namespace

void RunTree(Library& library, const CommonOptions& common, const std::string& path, const std::string& node) {
    const auto document = OpenShowingProgress(library, common, path);
    const std::string dataPath = DataPathOf(*document, node);
    if (common.json) {
        JsonOutput json;
        WriteNodes(*document, dataPath, json);
        json.Finish();
    } else {
        PrintNodes(*document, dataPath, 0);
    }
}

}  // namespace zentor_cli
