#include "conversion/json/json_children.h"

#include <cstring>
#include <vector>

#include "conversion/counting_name.h"
#include "errors/progress.h"

namespace zentor {

using ZT_PLUGIN::Child;
using ZT_PLUGIN::ChildSource;
using ZT_PLUGIN::StaticKind;

namespace {

// The values of the whole text.
class JsonChildren final : public ChildSource {
public:
    JsonChildren(std::shared_ptr<JsonIterator> top, NumberForm form, LossWatch& watch) : form_(form), watch_(watch) {
        levels_.push_back({std::move(top), false});
    }

    bool Next(Child& child) override {
        child.opensGroup = false;
        JsonKind kind = JsonKind::kNull;
        Level& level = levels_.back();
        JsonIterator& values = *level.values;
        if (level.isStarted) values.Next();
        level.isStarted = true;
        for (;; values.Next()) {
            if (!values.HasNext()) {
                levels_.pop_back();
                return false;
            }
            kind = values.GetType();
            if (kind != JsonKind::kNull) break;
            watch_.Count(ZT_NOTICE_NULLS, values.Offset());
        }
        constexpr std::uint64_t kReportedAtOnce = 0x1000;  // values
        if (count_++ % kReportedAtOnce == 0) ReportProgress(values.Offset());
        child.node.matchName = matchNames_.Next();
        child.node.displayName = values.GetKey();
        const bool hasEscapes = values.HasEscapes();
        if (hasEscapes) watch_.CheckText(child.node.displayName, values.Offset());
        switch (kind) {
            case JsonKind::kString:
                child.node.kind = StaticKind::kString;
                values.GetString(text_);
                child.node.text = text_;
                if (hasEscapes) watch_.CheckText(text_, values.Offset());
                break;
            case JsonKind::kNumber:
                child.node.kind = StaticKind::kNumber;
                TakeNumber(values, child);
                break;
            case JsonKind::kBoolean:
                child.node.kind = StaticKind::kBoolean;
                child.node.boolean = values.GetBool();
                break;
            case JsonKind::kArray:
                child.opensGroup = true;
                levels_.push_back({values.GetArrayIterator(), false});
                break;
            case JsonKind::kObject:
                child.opensGroup = true;
                levels_.push_back({values.GetObjectIterator(), false});
                break;
            case JsonKind::kNull:
                break;
        }
        return true;
    }

private:
    struct Level {
        std::shared_ptr<JsonIterator> values;
        bool isStarted;
    };

    void TakeNumber(const JsonIterator& values, Child& child) {
        const std::string_view number = values.GetNumberText();
        const char* const canonicalEnd =
            ScanPlainDecimal(number.data(), number.data() + number.size(), form_).canonicalEnd;
        child.node.numberText.length = 0;
        if (canonicalEnd == nullptr) {
            child.node.numberText = watch_.Format(values.GetNumber(), number.size(), values.Offset());
            return;
        }
        child.node.numberText.length = static_cast<std::uint32_t>(canonicalEnd - number.data());
        std::memcpy(child.node.numberText.bytes, number.data(), child.node.numberText.length);
    }

    NumberForm form_;
    LossWatch& watch_;
    CountingName<40> matchNames_{"matchName"};  // of all nodes, in the order in which they are written
    std::uint64_t count_ = 0;                   // of values so far
    std::string text_;                          // the string that is being written
    std::vector<Level> levels_;                 // the objects and arrays that the walk is in
};

}  // namespace

std::unique_ptr<ChildSource> MakeJsonChildren(std::shared_ptr<JsonIterator> top, NumberForm form, LossWatch& watch) {
    return std::make_unique<JsonChildren>(std::move(top), form, watch);
}

}  // namespace zentor
