#include "conversion/json/json_text.h"

#include <algorithm>

#include "conversion/json/json_check.h"
#include "errors/progress.h"
#include "errors/raise.h"
#include "util/byte_order_mark.h"

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
    const std::size_t mark = file_.bytes().size() - text_.size();
    const std::string_view before = text_.substr(0, offset);
    // A line ends with a line feed, or with a carriage return that none follows.
    std::int64_t line = 1;
    for (std::size_t at = 0; at < before.size(); ++at) {
        if (before[at] == '\n' || (before[at] == '\r' && text_.substr(at + 1, 1) != "\n")) ++line;
    }
    Raise({kConversionFailure, static_cast<std::int64_t>(mark + offset), line});
}

}  // namespace zentor
