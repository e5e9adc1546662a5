#include "conversion/json/json_text.h"

#include "conversion/json/json_check.h"
#include "errors/progress.h"
#include "errors/raise.h"
#include "util/byte_order_mark.h"
#include "util/line_count.h"

namespace zentor {

JsonText::JsonText(const std::string& path, NumberForm form) {
    switch (file_.Map(path)) {
        case MapResult::kMapped:
            break;
        case MapResult::kCannotOpen:
            Raise(kFailureOpeningFile);
        case MapResult::kSizeUnknown:
            Raise(kCorruptFile);
        case MapResult::kEmpty:
            Refuse(0);
        case MapResult::kCannotMap:
            Raise(kFailureFileMapping);
    }
    text_ = WithoutUtf8Mark(file_.bytes());
    if (const auto fault = FindJsonFault(text_, form)) Refuse(*fault);
    BeginStep(kInputChecked, kDocumentMade, text_.size());
}

std::shared_ptr<JsonIterator> JsonText::MakeIterator() {
    const std::size_t begin = text_.find_first_of("{[");
    if (begin == std::string_view::npos) Refuse(0);
    if (text_[begin] == '{') return std::make_shared<JsonObjectIterator>(*this, begin);
    return std::make_shared<JsonArrayIterator>(*this, begin);
}

void JsonText::Refuse(std::size_t offset) const {
    Raise({kConversionFailure, static_cast<std::int64_t>(MarkSize() + offset), LineAt(text_, offset)});
}

}  // namespace zentor
