// Fuzzing: whatever the bytes of a document are, opening it ends in an error or in an outline that can be walked.
//
// The first byte of an input chooses the parser, what follows its last byte 1 is a data path, and the document stands
// between them.
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

#include "errors/exception.h"
#include "reader/data_path.h"
#include "reader/node_records.h"
#include "reader/parser.h"
#include "reader/schema_words.h"

namespace {

using namespace zentor;

void Require(bool holds) {
    if (!holds) std::abort();
}

// Exactly the input's bytes, so that a sanitizer sees a read past their end.
class ExactCopy {
public:
    explicit ExactCopy(std::string_view bytes) : size_(bytes.size()), copy_(new char[bytes.size()]) {
        bytes.copy(copy_.get(), size_);
    }
    std::string_view bytes() const { return {copy_.get(), size_}; }

private:
    std::size_t size_;
    std::unique_ptr<char[]> copy_;
};

// A path as a host gets and hands back.
const JsonValue* HandBack(const VkjsonDocument& document, const ZT_DataPath& path) {
    return document.outline.FindNode(ParseDataPath(path.ToString()));
}

void CheckInfo(const JsonValue* node) {
    const ZT_GroupChildInfo info = GroupChildInfoOf(node);
    if (info.nodeType == ZT_NODE_STATIC) StaticDataInfoOf(node);
    if (info.nodeType == ZT_NODE_DYNAMIC) DynamicDataInfoOf(node);
}

// Recursion ends at the limit of groups.
void Walk(const VkjsonDocument& document, ZT_DataPath& path, const JsonValue* group) {
    const JsonValue& children = document.outline.ChildrenOf(group);
    for (JsonSize i = 0; i < children.Size(); ++i) {
        const JsonValue& child = children[i];
        path.items.push_back({std::string(TextOf(*FindMember(child, words::kMatchName))), i});
        Require(document.outline.FindNode(path) == &child);
        Require(HandBack(document, path) == &child);
        if (!path.items.back().matchName.empty()) {
            path.items.back().index = -1;
            Require(HandBack(document, path) == &child);
            path.items.back().index = i;
        }
        CheckInfo(&child);
        if (TypeOf(child) == ZT_NODE_GROUP) Walk(document, path, &child);
        path.items.pop_back();
    }
}

void Query(const VkjsonDocument& document, std::string_view dataPath) {
    try {
        CheckInfo(document.outline.FindNode(ParseDataPath(dataPath)));
    } catch (const ns_sensor::ZT_Exception& failure) {
        Require(failure.code() == 1 || failure.code() == 33 || failure.code() == 45);
    }
}

void OpenAndWalk(std::string_view bytes, ParserChoice choice, std::string_view dataPath) {
    const ExactCopy copy(bytes);
    std::unique_ptr<VkjsonDocument> document;
    try {
        document = ParseDocument(copy.bytes(), choice);
    } catch (const ns_sensor::ZT_Exception& failure) {
        Require(failure.code() >= 28 && failure.code() <= 47);
        Require(failure.extra1() >= 0 && static_cast<std::size_t>(failure.extra1()) <= bytes.size());
        return;
    }
    ZT_DataPath root = ParseDataPath("[\"dataOutline\"]");
    Walk(*document, root, nullptr);
    Query(*document, dataPath);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    std::string_view input(reinterpret_cast<const char*>(data), size);
    const auto choice = static_cast<ParserChoice>(static_cast<unsigned char>(input.front()) % 3);
    input.remove_prefix(1);
    const std::size_t separator = input.rfind('\1');
    if (separator == std::string_view::npos) {
        OpenAndWalk(input, choice, {});
    } else {
        OpenAndWalk(input.substr(0, separator), choice, input.substr(separator + 1));
    }
    return 0;
}
