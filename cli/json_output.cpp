#include "json_output.h"

#include <algorithm>

#include "standard_output.h"
#include "text_output.h"
#include "util/utf_codec.h"

namespace zentor_cli {

namespace {

constexpr std::size_t kPiece = 65536;

}  // namespace

void JsonOutput::EndObject() {
    writer_.EndObject();
    if (buffer_.GetSize() >= kPiece) WriteOut();
}

void JsonOutput::EndArray() {
    writer_.EndArray();
    if (buffer_.GetSize() >= kPiece) WriteOut();
}

void JsonOutput::Value(std::string_view text) {
    const bool isAscii = std::none_of(text.begin(), text.end(), [](char c) { return static_cast<signed char>(c) < 0; });
    if (isAscii) {
        writer_.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
        return;
    }
    const std::string valid = zentor::Utf16ToUtf8(zentor::Utf8ToUtf16(text));
    writer_.String(valid.data(), static_cast<rapidjson::SizeType>(valid.size()));
}

void JsonOutput::Value(double value) {
    const std::string text = NumberText(value);
    writer_.RawValue(text.data(), text.size(), rapidjson::kNumberType);
}

void JsonOutput::Finish() {
    buffer_.Put('\n');
    WriteOut();
}

void JsonOutput::WriteOut() {
    WriteOutput({buffer_.GetString(), buffer_.GetSize()});
    buffer_.Clear();
}

}  // namespace zentor_cli
