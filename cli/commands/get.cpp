#include "commands/commands.h"
#include "json_output.h"
#include "node_path.h"
#include "text_output.h"

namespace zentor_cli {

namespace {

void WriteCount(JsonOutput& json, const char* key, std::int64_t count) {
    if (count >= 0) json.Member(key, count);
}

void WriteMinMax(JsonOutput& json, const char* key, double minimum, double maximum) {
    json.Key(key);
    json.BeginObject();
    json.Member("min", minimum);
    json.Member("max", maximum);
    json.EndObject();
}

void WriteRange(JsonOutput& json, const Range& range) {
    json.BeginObject();
    WriteMinMax(json, "occurring", range.occurringMin, range.occurringMax);
    WriteMinMax(json, "legal", range.legalMin, range.legalMax);
    json.EndObject();
}

void WritePattern(JsonOutput& json, const DataType& type) {
    json.Key("pattern");
    json.BeginObject();
    json.Member("isSigned", type.isSigned);
    WriteCount(json, "digitsDecimal", type.digitsDecimal);
    WriteCount(json, "digitsInteger", type.digitsInteger);
    json.EndObject();
}

void WriteArrayProperties(JsonOutput& json, const DataType& type) {
    json.Key("numberArrayProperties");
    json.BeginObject();
    WritePattern(json, type);
    json.Key("arrayRanges");
    json.BeginObject();
    json.Key("ranges");
    json.BeginArray();
    for (const Range& range : type.ranges) WriteRange(json, range);
    json.EndArray();
    json.EndObject();
    WriteCount(json, "arraySize", type.arraySize);
    json.Key("arrayDisplayNames");
    json.BeginArray();
    for (const std::string& name : type.arrayDisplayNames) json.Value(name);
    json.EndArray();
    json.Member("isPoint", type.isPoint);
    json.EndObject();
}

void WriteNumberProperties(JsonOutput& json, const DataType& type) {
    json.Key("numberStringProperties");
    json.BeginObject();
    WritePattern(json, type);
    json.Key("range");
    WriteRange(json, type.ranges.front());
    json.EndObject();
}

void WriteStringProperties(JsonOutput& json, const DataType& type) {
    json.Key("paddedStringProperties");
    json.BeginObject();
    WriteCount(json, "maxDigitsInStrLength", type.maxDigitsInStrLength);
    WriteCount(json, "maxLen", type.maxLen);
    json.Member("eventMarkerB", type.isEventMarker);
    json.EndObject();
}

// As the document has it.
void WriteDataType(JsonOutput& json, const DataType& type) {
    json.Key("dataType");
    json.BeginObject();
    json.Member("type", type.type);
    if (type.isString) {
        WriteStringProperties(json, type);
    } else if (type.isArray) {
        WriteArrayProperties(json, type);
    } else if (!type.ranges.empty()) {
        WriteNumberProperties(json, type);
    }
    json.EndObject();
}

void WriteValue(JsonOutput& json, const Leaf& leaf) {
    json.Key("value");
    if (const auto* const numbers = std::get_if<std::vector<double>>(&leaf.value)) {
        json.BeginArray();
        for (const double number : *numbers) json.Value(number);
        json.EndArray();
    } else if (const auto* const text = std::get_if<std::string>(&leaf.value)) {
        json.Value(*text);
    } else if (const auto* const flag = std::get_if<bool>(&leaf.value)) {
        json.Value(*flag);
    } else {
        json.Value(std::get<double>(leaf.value));
    }
}

void WriteSampleInfo(JsonOutput& json, const Leaf& leaf) {
    json.Member("sampleSetID", leaf.sampleSetId);
    json.Member("interpolation", leaf.isLinear ? "linear" : "hold");
    json.Member("hasExpectedFrequencyB", leaf.hasExpectedFrequency);
    json.Member("sampleCount", leaf.sampleCount);
    if (leaf.hasExpectedFrequency) json.Member("expectedMaxInterSampleDuration", leaf.maxInterSampleDuration);
}

std::string RangeText(const Range& range) {
    return NumberText(range.occurringMin) + " to " + NumberText(range.occurringMax) + ", legal " +
           NumberText(range.legalMin) + " to " + NumberText(range.legalMax);
}

void PrintCount(const char* name, std::int64_t count) {
    if (count >= 0) PrintField(name, std::to_string(count));
}

void PrintFlag(const char* name, bool flag) { PrintField(name, flag ? "yes" : "no"); }

void PrintDataType(const DataType& type) {
    PrintField("data type", Printable(type.type));
    if (type.isString) {
        PrintCount("longest, bytes", type.maxLen);
        PrintCount("digits of the length", type.maxDigitsInStrLength);
        PrintFlag("event marker", type.isEventMarker);
    }
    if (type.ranges.empty()) return;
    PrintFlag("signed", type.isSigned);
    PrintCount("digits before point", type.digitsInteger);
    PrintCount("digits after point", type.digitsDecimal);
    if (type.isArray) PrintCount("elements", type.arraySize);
    if (type.isArray) PrintFlag("point", type.isPoint);
    for (std::size_t i = 0; i < type.ranges.size(); ++i) {
        const std::string name = i < type.arrayDisplayNames.size() ? Printable(type.arrayDisplayNames[i]) + ": " : "";
        PrintField("range", name + RangeText(type.ranges[i]));
    }
}

void PrintValue(const Leaf& leaf) {
    if (const auto* const numbers = std::get_if<std::vector<double>>(&leaf.value)) {
        PrintField("value", NumbersText(*numbers));
    } else if (const auto* const text = std::get_if<std::string>(&leaf.value)) {
        PrintField("value", '"' + Printable(*text) + '"');
    } else if (const auto* const flag = std::get_if<bool>(&leaf.value)) {
        PrintField("value", *flag ? "true" : "false");
    } else {
        PrintField("value", NumberText(std::get<double>(leaf.value)));
    }
}

void PrintSampleInfo(const Leaf& leaf) {
    PrintField("sample set", Printable(leaf.sampleSetId));
    PrintField("interpolation", leaf.isLinear ? "linear" : "hold");
    PrintField("samples", std::to_string(leaf.sampleCount));
    if (leaf.hasExpectedFrequency) PrintField("longest interval", Printable(leaf.maxInterSampleDuration));
}

// One node, with what its kind has.
struct Node {
    NodeNames names;
    Leaf leaf;
    std::uint64_t children = 0;
};

Node ReadNode(const Document& document, const std::string& path) {
    Node node{document.Names(path), {}};
    if (node.names.kind == NodeKind::kStatic) node.leaf = document.StaticNode(path);
    if (node.names.kind == NodeKind::kDynamic) node.leaf = document.DynamicNode(path);
    if (node.names.kind == NodeKind::kGroup) node.children = document.ChildrenOf(path).count;
    return node;
}

void WriteJson(const Node& node) {
    JsonOutput json;
    json.BeginObject();
    json.Member("type", NameOf(node.names.kind));
    json.Member("matchName", node.names.matchName);
    json.Member("displayName", node.names.displayName);
    if (node.names.kind == NodeKind::kGroup) {
        json.Member("children", node.children);
    } else {
        if (node.names.kind == NodeKind::kDynamic) WriteSampleInfo(json, node.leaf);
        WriteDataType(json, node.leaf.dataType);
        if (node.names.kind == NodeKind::kStatic) WriteValue(json, node.leaf);
    }
    json.EndObject();
    json.Finish();
}

void Print(const Node& node) {
    PrintField("kind", NameOf(node.names.kind));
    PrintField("match name", Printable(node.names.matchName));
    PrintField("display name", Printable(node.names.displayName));
    if (node.names.kind == NodeKind::kGroup) {
        PrintField("children", std::to_string(node.children));
        return;
    }
    if (node.names.kind == NodeKind::kDynamic) PrintSampleInfo(node.leaf);
    PrintDataType(node.leaf.dataType);
    if (node.names.kind == NodeKind::kStatic) PrintValue(node.leaf);
}

}  // namespace

void RunGet(Library& library, const CommonOptions& common, const std::string& path, const std::string& nodePath) {
    const auto document = OpenShowingProgress(library, common, path);
    const Node node = ReadNode(*document, DataPathOf(*document, nodePath));
    if (common.json) {
        WriteJson(node);
    } else {
        Print(node);
    }
}

}  // namespace zentor_cli
