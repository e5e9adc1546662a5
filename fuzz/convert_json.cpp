// Fuzzing: whatever the bytes of a JSON file are, iterators walk it as RapidJSON's own tree of values is walked, and
// the document holds these values, or the file is refused.
#include <cstdint>
#include <string>
#include <string_view>

#include "conversion/json/json_converter.h"
#include "conversion/json/json_text.h"
#include "files.h"
#include "model/stream_state.h"
#include "util/number_text.h"
#include "writer/document_writer.h"

namespace {

using namespace zentor;
using namespace zentor_fuzz;

struct Nodes {
    std::size_t groups = 0;
    std::size_t statics = 0;
    bool hasUnreadableText = false;  // a text that goes into the document byte for byte, and ends there too soon

    void AddText(std::string_view text) {
        hasUnreadableText = hasUnreadableText || text.find_first_of("\"\\") != std::string_view::npos;
    }
};

void RequireText(std::string_view text, const rapidjson::Value& expected) {
    Require(text == std::string_view(expected.GetString(), expected.GetStringLength()));
}

void Compare(JsonIterator& values, const rapidjson::Value& expected, Nodes& nodes) {
    std::string text;
    const std::size_t size = expected.IsObject() ? expected.MemberCount() : expected.Size();
    for (std::size_t k = 0; k < size; ++k, values.Next()) {
        Require(values.HasNext());
        const auto index = static_cast<rapidjson::SizeType>(k);
        const rapidjson::Value& value =
            expected.IsObject() ? (expected.MemberBegin() + static_cast<std::ptrdiff_t>(k))->value : expected[index];
        if (expected.IsObject()) {
            RequireText(values.GetKey(), (expected.MemberBegin() + static_cast<std::ptrdiff_t>(k))->name);
        } else {
            Require(values.GetKey() == std::to_string(k));
        }
        if (value.IsNull()) {
            Require(values.GetType() == JsonKind::kNull);
            continue;
        }
        nodes.AddText(values.GetKey());
        ++(value.IsObject() || value.IsArray() ? nodes.groups : nodes.statics);
        switch (values.GetType()) {
            case JsonKind::kNull:
                Require(false);
                break;
            case JsonKind::kString:
                values.GetString(text);
                RequireText(text, value);
                nodes.AddText(text);
                break;
            case JsonKind::kNumber:
                RequireText(values.GetNumberText(), value);
                Require(IsWritable(values.GetNumber()));
                break;
            case JsonKind::kBoolean:
                Require(values.GetBool() == value.GetBool());
                break;
            case JsonKind::kArray:
                Require(value.IsArray());
                Compare(*values.GetArrayIterator(), value, nodes);
                break;
            case JsonKind::kObject:
                Require(value.IsObject());
                Compare(*values.GetObjectIterator(), value, nodes);
                break;
        }
    }
    Require(!values.HasNext());
}

// The nodes that the document has to have; nothing when the text is refused.
std::optional<Nodes> Walk(const std::string& path, std::string_view json) {
    try {
        JsonText text(path, NumberForm::kSixteenDigits);
        rapidjson::Document values;  // with numbers as text: RapidJSON's full precision goes wrong for 0e200
        values.Parse<rapidjson::kParseNumbersAsStringsFlag | rapidjson::kParseValidateEncodingFlag>(text.view().data(),
                                                                                                    text.view().size());
        Require(!values.HasParseError());
        Nodes nodes;
        Compare(*text.MakeIterator(), values, nodes);
        return nodes;
    } catch (const ns_sensor::ZT_Exception& failure) {
        RequireRefusal(failure, 1506, json);
        return std::nullopt;
    }
}

bool Convert(const std::string& input, const std::string& output, std::string_view json) {
    const std::uint64_t id = ZT_PLUGIN::OpenStream(std::make_unique<DocumentWriter>(output));
    bool converted = false;
    try {
        converted = JsonConverter({input, input, id}).Convert();
        Require(converted);
    } catch (const ns_sensor::ZT_Exception& failure) {
        RequireRefusal(failure, 1506, json);
    }
    ZT_PLUGIN::CloseStream(id);
    Require(converted == (File_IO::GetFileMode(output) == PathKind::kFile));
    return converted;
}

void Count(const OutlineIndex& index, NodeNumber group, Nodes& nodes) {
    const OutlineIndex::Children children = index.ChildrenOf(group);
    for (NodeNumber node = children.first; node != children.first + children.count; ++node) {
        if (index.TypeOf(node) == ZT_NODE_GROUP) {
            ++nodes.groups;
            Count(index, node, nodes);
        } else {
            ++nodes.statics;
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::string input = PathFor(".json");
    static const std::string output = PathFor(".vkjson");
    const std::string_view json(reinterpret_cast<const char*>(data), size);
    WriteFile(input, json);
    const std::optional<Nodes> expected = Walk(input, json);
    Require(Convert(input, output, json) == expected.has_value());
    if (expected) {
        if (!expected->hasUnreadableText) {
            const std::string bytes = ReadFile(output);
            const auto document = ParseDocument(bytes, ParserChoice::kVersion2);
            Nodes found;
            Count(document->outline.index(), kRootNode, found);
            Require(found.groups == expected->groups && found.statics == expected->statics);
        }
        File_IO::Delete(output);
    }
    File_IO::Delete(input);
    return 0;
}
