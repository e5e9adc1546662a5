#include "conversion/json/json_iterator.h"

#include "conversion/json/json_text.h"
#include "errors/rapidjson.h"

namespace zentor {

JsonElements::JsonElements(JsonText& text, std::size_t begin, char closing)
    : text_(text), cursor_(text.view(), begin + 1), begin_(begin), closing_(closing) {}

bool JsonElements::GoToFirst() {
    cursor_.SkipWhiteSpace();
    hasNext_ = !cursor_.Skip(closing_);
    return hasNext_ || End();
}

bool JsonElements::GoToNext() {
    SkipCurrent();
    cursor_.SkipWhiteSpace();
    if (cursor_.Skip(closing_)) return End();
    if (!cursor_.Skip(',')) Refuse();
    cursor_.SkipWhiteSpace();
    return true;
}

bool JsonElements::End() {
    hasNext_ = false;
    text_.walked = {begin_, cursor_.Offset()};
    return false;
}

void JsonElements::SkipCurrent() {
    if (type_ != JsonKind::kArray && type_ != JsonKind::kObject) return;
    if (text_.walked.begin == cursor_.Offset()) {
        cursor_.MoveTo(text_.walked.end);
    } else {
        cursor_.SkipValue();
    }
}

RawString JsonElements::ReadKey() {
    RawString key;
    if (!cursor_.TakeString(key)) Refuse();
    cursor_.SkipWhiteSpace();
    if (!cursor_.Skip(':')) Refuse();
    cursor_.SkipWhiteSpace();
    return key;
}

void JsonElements::ReadValue() {
    if (cursor_.AtEnd()) Refuse();
    const std::size_t begin = cursor_.Offset();
    switch (cursor_.Peek()) {
        case '"':
            type_ = JsonKind::kString;
            if (!cursor_.TakeString(value_)) Refuse();
            return;
        case '{':
            type_ = JsonKind::kObject;
            return;
        case '[':
            type_ = JsonKind::kArray;
            return;
        case 'n':
            type_ = JsonKind::kNull;
            break;
        case 't':
        case 'f':
            type_ = JsonKind::kBoolean;
            break;
        default:
            type_ = JsonKind::kNumber;
            break;
    }
    cursor_.SkipScalar();
    value_ = {text_.view().substr(begin, cursor_.Offset() - begin), false};
}

void JsonElements::Require(JsonKind type) const {
    if (!hasNext_ || type_ != type) RaiseJsonAssertion();
}

void JsonElements::Refuse() const { text_.Refuse(cursor_.Offset()); }

void JsonElements::GetString(std::string& text) const {
    Require(JsonKind::kString);
    if (value_.hasBackslash) {
        text = value_.Decoded();
    } else {
        text.assign(value_.text);
    }
}

std::string_view JsonElements::GetNumberText() const {
    Require(JsonKind::kNumber);
    return value_.text;
}

double JsonElements::GetNumber() const {
    Require(JsonKind::kNumber);
    double value = 0;
    if (JsonCursor(value_.text).TakeNumber(value) != NumberStatus::kOk) Refuse();
    return value;
}

bool JsonElements::GetBool() const {
    Require(JsonKind::kBoolean);
    return value_.text.front() == 't';
}

std::shared_ptr<JsonIterator> JsonElements::GetObjectIterator() const {
    Require(JsonKind::kObject);
    return std::make_shared<JsonObjectIterator>(text_, cursor_.Offset());
}

std::shared_ptr<JsonIterator> JsonElements::GetArrayIterator() const {
    Require(JsonKind::kArray);
    return std::make_shared<JsonArrayIterator>(text_, cursor_.Offset());
}

std::uint32_t JsonElements::GetSize() const {
    const std::shared_ptr<JsonIterator> inside = type_ == JsonKind::kObject ? GetObjectIterator() : GetArrayIterator();
    std::uint32_t size = 0;
    for (; inside->HasNext(); inside->Next()) ++size;
    return size;
}

JsonObjectIterator::JsonObjectIterator(JsonText& text, std::size_t begin) : JsonElements(text, begin, '}') {
    if (GoToFirst()) ReadMember();
}

void JsonObjectIterator::Next() {
    if (GoToNext()) ReadMember();
}

void JsonObjectIterator::ReadMember() {
    const RawString key = ReadKey();
    key_ = key.text;
    isKeyDecoded_ = key.hasBackslash;
    if (isKeyDecoded_) {
        decodedKey_ = key.Decoded();
        key_ = decodedKey_;
    }
    ReadValue();
}

JsonArrayIterator::JsonArrayIterator(JsonText& text, std::size_t begin) : JsonElements(text, begin, ']') {
    if (GoToFirst()) ReadElement();
}

void JsonArrayIterator::Next() {
    if (GoToNext()) ReadElement();
}

void JsonArrayIterator::ReadElement() {
    key_ = index_.Next();
    ReadValue();
}

}  // namespace zentor
