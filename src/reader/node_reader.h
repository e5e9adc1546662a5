// Reads the text of one node, without that of its children.
#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <optional>
#include <string_view>

#include "reader/json_value.h"
#include "util/json_cursor.h"

namespace zentor {

// The members of a node that mean something, found in its text; of one that comes twice, the first.
class NodeText {
public:
    // What to do at the array of the children, whose "[" stands at an offset: the offset where the node's text goes on,
    // or nothing when only the end of the node follows.
    using AfterChildren = std::function<std::optional<std::size_t>(std::size_t)>;

    // Finds the members of the node at the cursor and leaves the cursor behind it; where `after` gives nothing, at the
    // "[" of the children. False when the text ends too soon or is no object; where it has been checked before, it is
    // one. Any other node's array of children is found in the same way.
    bool Find(JsonCursor& cursor, const AfterChildren& after);

    // The offset of the "[" of the children; nothing when the node has none.
    std::optional<std::size_t> children() const { return children_; }
    // Whether the text goes on after them.
    bool GoesOn() const { return goesOn_; }

    // An object of what has been found, but for the children. Codes ZT_INVALID_JSON, ZT_PROPERTY_TYPE where the text
    // has not been checked before.
    void BuildValues(std::string_view bytes, JsonDocument& values) const;
    // The text of a member, empty when the node has none.
    std::string_view TextOfMember(std::string_view bytes, std::string_view key) const;

private:
    struct Span {
        std::size_t begin = 0;
        std::size_t end = 0;  // 0: not found
    };
    static constexpr std::size_t kMembers = 12;

    void Keep(const RawString& key, std::size_t begin, std::size_t end);

    std::array<Span, kMembers> spans_;
    std::optional<std::size_t> children_;
    bool hasOtherChildren_ = false;  // a first member of that name that is no array
    bool goesOn_ = false;
};

}  // namespace zentor
