#include <cstdio>

#include "commands/commands.h"
#include "json_output.h"
#include "text_output.h"

namespace zentor_cli {

namespace {

// Groups of a document do not stand deeper in each other than the library allows.
void PrintNodes(const Document& document, const std::string& path, int depth) {
    for (const Child& child : document.Children(path)) {
        const NodeNames names = document.Names(child.path);
        std::printf("%*s%s %s %s", 2 * depth, "", child.path.c_str(), NameOf(names.kind),
                    Printable(names.matchName).c_str());
        if (!names.displayName.empty()) std::printf(" \"%s\"", Printable(names.displayName).c_str());
        if (names.kind == NodeKind::kDynamic) {
            std::printf(" %llu samples", static_cast<unsigned long long>(document.DynamicNode(child.path).sampleCount));
        }
        std::printf("\n");
        if (names.kind == NodeKind::kGroup) PrintNodes(document, child.path, depth + 1);
    }
}

void WriteNodes(const Document& document, const std::string& path, JsonOutput& json) {
    json.BeginArray();
    for (const Child& child : document.Children(path)) {
        const NodeNames names = document.Names(child.path);
        json.BeginObject();
        json.Member("path", child.path);
        json.Member("index", child.index);
        json.Member("type", NameOf(names.kind));
        json.Member("matchName", names.matchName);
        json.Member("displayName", names.displayName);
        if (names.kind == NodeKind::kDynamic) {
            json.Member("sampleCount", document.DynamicNode(child.path).sampleCount);
        }
        if (names.kind == NodeKind::kGroup) {
            json.Key("children");
            WriteNodes(document, child.path, json);
        }
        json.EndObject();
    }
    json.EndArray();
}

}  // namespace

void RunTree(Library& library, const CommonOptions& common, const std::string& path, const std::string& dataPath) {
    const auto document = OpenShowingProgress(library, common, path);
    if (common.json) {
        JsonOutput json;
        WriteNodes(*document, dataPath, json);
        json.Finish();
    } else {
        PrintNodes(*document, dataPath, 0);
    }
}

}  // namespace zentor_cli
