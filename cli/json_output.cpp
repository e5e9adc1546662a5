#include "json_output.h"

#include <algorithm>

#include "standard_output.h"
#include "text_output.h"
#include "util/utf_codec.h"

namespace zentor_cli {

namespace {

constexpr std::size_t kPiece = 65536;

}  // namespace

void JsonText::EndObject() {
    writer_.EndObject();
    OnEnd(buffer_.GetSize());
}

void JsonText::EndArray() {
    writer_.EndArray();
    OnEnd(buffer_.GetSize());
}

void JsonText::Value(std::string_view text) {
    const bool isAscii = std::none_of(text.begin(), text.end(), [](char c) { return static_cast<signed char>(c) < 0; });
    if (isAscii) {
        writer_.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
        return;
    }
    const std::string valid = zentor::Utf16ToUtf8(zentor::Utf8ToUtf16(text));
    writer_.String(valid.data(), static_cast<rapidjson::SizeType>(valid.size()));
}

void JsonText::Value(double value) {
    const std::string text = NumberText(value);
    writer_.RawValue(text.data(), text.size(), rapidjson::kNumberType);
}

std::string JsonText::Take() {
    std::string text(buffer_.GetString(), buffer_.GetSize());
    buffer_.Clear();
    return text;
}

void JsonOutput::OnEnd(std::size_t size) {
    if (size >= kPiece) WriteOutput(Take());
}

void JsonOutput::Finish() { WriteOutput(Take() + '\n'); }

}  // namespace zentor_cli
