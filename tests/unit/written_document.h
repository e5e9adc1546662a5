// Documents as they are written by converters.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>

#include "conversion/native_frame.h"
#include "model/stream_state.h"
#include "test_folder.h"
#include "writer/document_writer.h"

namespace zentor_test {

using namespace zentor;
using namespace ZT_PLUGIN;

class NoConverter final : public ZT_ConverterHandlerBase {
public:
    using ZT_ConverterHandlerBase::ZT_ConverterHandlerBase;
    bool Convert() override { return false; }
};

// A document that is being written, as a built-in converter sees it.
class Document {
public:
    Document()
        : path_(folder_ / "d.vkjson"),
          id_(OpenStream(std::make_unique<DocumentWriter>(path_))),
          converter_({"in", "in", id_}),
          root(NativeCreateRoot(&converter_, converter_.Info().streamId)) {}
    ~Document() { CloseStream(id_); }
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    const ZT_ConverterHandlerBase* operator*() const { return &converter_; }
    std::uint64_t StreamId() const { return id_; }
    std::string Text() const { return ReadWhole(path_); }
    std::size_t FileCount() const { return folder_.FileCount(); }
    void Close() { CloseStream(id_); }
    std::uint32_t Write(std::uint32_t expectedCode = 0) {
        ZT_ErrorRecord error{0, 77, -1, -1};
        const std::uint32_t written = root->WriteDocument(&error);
        EXPECT_EQ(error.code, expectedCode);
        return written;
    }
    // Attaches a node to a group, or to the root.
    template <class Group, class Node>
    static void Attach(const Owner<Group>& group, const Owner<Node>& node) {
        CallModel([&](auto* error) {
            if constexpr (std::is_base_of_v<IVkjsonGroup_v1, Node>) {
                group->AddGroupShared(node.get(), error);
            } else if constexpr (std::is_base_of_v<VkjsonDynamicDataImpl, Node>) {
                group->AddDynamicDataShared(node.get(), error);
            } else {
                static_assert(std::is_base_of_v<VkjsonStaticDataImpl, Node>);
                group->AddStaticDataShared(node.get(), error);
            }
        });
    }
    template <class Node>
    void Add(const Owner<Node>& node) {
        Attach(root, node);
    }

private:
    TestFolder folder_;
    std::string path_;
    std::uint64_t id_;
    NoConverter converter_;

public:
    Owner<VkjsonRootImpl> root;
};

// Text with its double quotes written as single ones.
inline std::string Json(std::string text) {
    std::replace(text.begin(), text.end(), '\'', '"');
    return text;
}

}  // namespace zentor_test
