#include "conversion/json/json_children.h"

#include <cstring>

#include "conversion/counting_name.h"
#include "util/number_text.h"

namespace zentor {

using ZT_PLUGIN::Child;
using ZT_PLUGIN::ChildSource;
using ZT_PLUGIN::StaticKind;

namespace {

// What all groups of a document share.
struct JsonWalk {
    CountingName<40> matchNames{"matchName"};  // of all nodes, in the order in which they are written
    std::string text;                          // the string that is being written
};

// The values of one object or array.
class JsonChildren final : public ChildSource {
public:
    JsonChildren(std::shared_ptr<JsonIterator> values, JsonWalk& walk) : values_(std::move(values)), walk_(walk) {}

    bool Next(Child& child) override {
        if (isStarted_) values_->Next();
        isStarted_ = true;
        while (values_->HasNext() && values_->GetType() == JsonKind::kNull) values_->Next();
        if (!values_->HasNext()) return false;
        child.node.matchName = walk_.matchNames.Next();
        child.node.displayName = values_->GetKey();
        switch (values_->GetType()) {
            case JsonKind::kString:
                child.node.kind = StaticKind::kString;
                values_->GetString(walk_.text);
                child.node.text = walk_.text;
                break;
            case JsonKind::kNumber:
                child.node.kind = StaticKind::kNumber;
                TakeNumber(child);
                break;
            case JsonKind::kBoolean:
                child.node.kind = StaticKind::kBoolean;
                child.node.boolean = values_->GetBool();
                break;
            case JsonKind::kArray:
                child.children = std::make_unique<JsonChildren>(values_->GetArrayIterator(), walk_);
                break;
            case JsonKind::kObject:
                child.children = std::make_unique<JsonChildren>(values_->GetObjectIterator(), walk_);
                break;
            case JsonKind::kNull:
                break;
        }
        return true;
    }

private:
    void TakeNumber(Child& child) const {
        const std::string_view number = values_->GetNumberText();
        const char* const canonicalEnd = ScanPlainDecimal(number.data(), number.data() + number.size()).canonicalEnd;
        child.node.numberText.length = 0;
        if (canonicalEnd == nullptr) {
            child.node.number = values_->GetNumber();
            return;
        }
        child.node.numberText.length = static_cast<std::uint32_t>(canonicalEnd - number.data());
        std::memcpy(child.node.numberText.bytes, number.data(), child.node.numberText.length);
    }

    std::shared_ptr<JsonIterator> values_;
    JsonWalk& walk_;
    bool isStarted_ = false;
};

class JsonOutline final : public ChildSource {
public:
    explicit JsonOutline(std::shared_ptr<JsonIterator> top) : top_(std::move(top), walk_) {}
    bool Next(Child& child) override { return top_.Next(child); }

private:
    JsonWalk walk_;
    JsonChildren top_;
};

}  // namespace

std::unique_ptr<ChildSource> MakeJsonChildren(std::shared_ptr<JsonIterator> top) {
    return std::make_unique<JsonOutline>(std::move(top));
}

}  // namespace zentor
