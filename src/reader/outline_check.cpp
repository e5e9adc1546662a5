#include "reader/outline_check.h"

#include <algorithm>
#include <array>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <unordered_set>

#include "errors/raise.h"
#include "format/limits.h"
#include "format/words.h"
#include "reader/node_reader.h"
#include "reader/value_reader.h"

namespace zentor {

namespace {

class Check {
public:
    Check(std::string_view bytes, std::size_t offset, const ZT_VkjsonValidator& validator,
          const std::function<void(std::size_t)>& passed)
        : cursor_(bytes, offset),
          lastPassed_(offset),
          validator_(validator),
          passed_(passed),
          checks_(bytes, offset, words::kDataOutline) {
        JsonCursor syntax(bytes, offset);
        continued_ = CheckValue(syntax, words::kDataOutline, words::kChildren);
        end_ = syntax.Offset();
    }

    OutlineContents Run() {
        Nodes();
        if (duplicateId_) Raise({kDuplicateSampleId, duplicateId_->offset}, duplicateId_->id);
        contents_.index = builder_.Finish();
        return std::move(contents_);
    }
    std::size_t EndOffset() const { return end_; }

private:
    struct DuplicateId {
        std::int64_t offset;
        std::string id;
    };

    // From the "[" to behind the "]". Recursion ends at the limit of groups.
    void Nodes() {
        cursor_.Skip('[');
        for (std::size_t i = 0;; ++i) {
            cursor_.SkipWhiteSpace();
            if (cursor_.Skip(']')) return;
            const auto into = checks_.Into(i);
            Node();
            cursor_.SkipWhiteSpace();
            cursor_.Skip(',');
        }
    }

    void Node() {
        const std::size_t offset = cursor_.Offset();
        ReportPassed(offset);
        if (cursor_.Peek() != '{') checks_.RaiseTypeAt(words::kDataOutline, {}, JsonType::kObject);
        NodeText text;
        text.Find(cursor_, [&](std::size_t begin) { return AfterChildren(begin); });
        if (OwnValues(text, offset) == ZT_NODE_GROUP) return Children(text, offset);
        if (text.children() && !text.GoesOn()) {  // they mean nothing here
            cursor_.SkipValue();
            EndNode();
        }
    }

    // Checks all but the children; the values are gone when these follow.
    ZT_NodeType OwnValues(const NodeText& text, std::size_t offset) {
        JsonPool pool(memory_.data(), memory_.size());
        JsonDocument node(&pool);
        text.BuildValues(cursor_.Bytes(), node);
        const ZT_NodeType type = validator_.NodeHead(checks_, node);
        AddMatchName(TextOf(*FindMember(node, words::kMatchName)));
        if (type == ZT_NODE_GROUP) {
            if (groupDepth_ == kGroupLimit) Raise({kTooDeepNesting, checks_.OffsetOf()}, std::to_string(kGroupLimit));
            if (!text.children()) checks_.Require(node, words::kChildren, JsonType::kArray);
            return type;
        }
        validator_.NodeBody(checks_, node, type);
        if (type == ZT_NODE_STATIC) {
            builder_.AddStatic(offset);
        } else {
            AddDynamic(node, offset);
        }
        return type;
    }

    void Children(const NodeText& text, std::size_t offset) {
        const std::size_t next = cursor_.Offset();
        cursor_.MoveTo(*text.children());
        if (!validator_.AllowsEmptyArrays()) RequireChildren();
        const auto into = checks_.Into(words::kChildren);
        ++groupDepth_;
        builder_.BeginGroup(offset);
        Nodes();
        if (text.GoesOn()) {
            builder_.EndGroup(cursor_.Offset());
            cursor_.MoveTo(next);
        } else {
            builder_.EndGroup();
            EndNode();
        }
        --groupDepth_;
    }

    void RequireChildren() {
        JsonCursor cursor = cursor_;
        cursor.Skip('[');
        cursor.SkipWhiteSpace();
        if (cursor.Skip(']')) checks_.RaiseAt(kEmptyArrayAtPath, words::kChildren, words::kChildren);
    }

    std::optional<std::size_t> AfterChildren(std::size_t begin) const {
        const auto found = std::lower_bound(continued_.begin(), continued_.end(), std::pair(begin, std::size_t{0}));
        if (found == continued_.end() || found->first != begin) return std::nullopt;
        return found->second;
    }

    void EndNode() {
        cursor_.SkipWhiteSpace();
        cursor_.Skip('}');
    }

    void AddMatchName(std::string_view name) {
        if (!names_.insert(IsOfDocument(name) ? name : nameCopies_.emplace_back(name)).second) {
            checks_.RaiseAt(kDuplicateMatchName, Excerpt(name), words::kMatchName);
        }
    }

    void AddDynamic(const JsonValue& node, std::size_t offset) {
        const std::string_view id = TextOf(*FindMember(node, words::kSampleSetId));
        const std::uint64_t number = contents_.sets.size();
        const bool isNew = IsOfDocument(id) ? contents_.ids.Add(id, number) : contents_.ids.AddCopy(id, number);
        if (!isNew && !duplicateId_) duplicateId_ = {checks_.OffsetOf(words::kSampleSetId), Excerpt(id)};
        contents_.sets.push_back(DescribeSampleSet(node));
        builder_.AddDynamic(offset);
    }

    // Texts with escapes are those of a node's values, and go with them.
    bool IsOfDocument(std::string_view text) const {
        const std::string_view bytes = cursor_.Bytes();
        const std::less<const char*> before;
        return !text.empty() && !before(text.data(), bytes.data()) && before(text.data(), bytes.data() + bytes.size());
    }

    void ReportPassed(std::size_t offset) {
        constexpr std::size_t kPassedAtOnce = std::size_t{32} << 20;
        if (offset < lastPassed_ + kPassedAtOnce) return;
        passed_(offset);
        lastPassed_ = offset;
    }

    JsonCursor cursor_;
    std::size_t lastPassed_;
    const ZT_VkjsonValidator& validator_;
    const std::function<void(std::size_t)>& passed_;
    ValueChecks checks_;
    ArraySpans continued_;  // arrays of children that something follows
    std::size_t end_ = 0;
    std::size_t groupDepth_ = 0;
    std::array<char, 16384> memory_;  // of one node's values, as far as it goes
    std::unordered_set<std::string_view, KeyedHash> names_;
    std::deque<std::string> nameCopies_;
    std::optional<DuplicateId> duplicateId_;
    OutlineIndexBuilder builder_;
    OutlineContents contents_;
};

}  // namespace

OutlineContents CheckOutline(std::string_view bytes, std::size_t& offset, const ZT_VkjsonValidator& validator,
                             const std::function<void(std::size_t)>& passed) {
    Check check(bytes, offset, validator, passed);
    OutlineContents contents = check.Run();
    offset = check.EndOffset();
    return contents;
}

}  // namespace zentor
