#include "conversion/plugin/manifest.h"

#include "conversion/input_checks.h"
#include "errors/locale.h"
#include "errors/rapidjson.h"

namespace zentor {

namespace {

using Value = rapidjson::Value;

constexpr const char* kArray = "JSON Array";

std::string_view TextOf(const Value& string) { return {string.GetString(), string.GetStringLength()}; }

const Value* Find(const Value& object, const char* key) {
    const auto member = object.FindMember(key);
    return member == object.MemberEnd() ? nullptr : &member->value;
}

[[noreturn]] void RaiseWrongType(const char* key, const char* expected) {
    Raise(kManifestPropertyType, Quoted(key), Quoted(expected));
}

// A property that has to be there and of a type.
const Value& Require(const Value& object, const char* key, bool (Value::*isType)() const) {
    const Value* const value = Find(object, key);
    if (value == nullptr || !(value->*isType)()) Raise(kSchemaViolation, key);
    return *value;
}

// The elements of an optional array of objects.
template <class Read>
void ForEachObject(const Value& object, const char* key, Read&& read) {
    const Value* const array = Find(object, key);
    if (array == nullptr) return;
    if (!array->IsArray()) RaiseWrongType(key, kArray);
    for (const Value& element : array->GetArray()) {
        if (!element.IsObject()) Raise(kSchemaViolation, key);
        read(element);
    }
}

// All names are checked, whichever is chosen.
std::string ChooseName(const Value& converter, std::string_view locale) {
    Require(converter, "name", &Value::IsArray);
    const Value* chosen = nullptr;
    bool isOfLocale = false;
    ForEachObject(converter, "name", [&](const Value& name) {
        const std::string_view nameLocale = TextOf(Require(name, "localeID", &Value::IsString));
        const Value& text = Require(name, "value", &Value::IsString);
        if (!isOfLocale && (nameLocale == locale || (chosen == nullptr && nameLocale == kDefaultLocale))) {
            chosen = &text;
            isOfLocale = nameLocale == locale;
        }
    });
    if (chosen == nullptr) Raise(kSchemaViolation, "value");
    return std::string(TextOf(*chosen));
}

FormatSignature ReadSignature(const Value& signature) {
    const Value& offset = Require(signature, "offset", &Value::IsUint64);
    const std::string_view bytes = TextOf(Require(signature, "byte_seq", &Value::IsString));
    const Value& length = Require(signature, "length", &Value::IsUint64);
    // No bytes would fit any input.
    if (length.GetUint64() == 0 || length.GetUint64() > bytes.size()) Raise(kSchemaViolation, "length");
    return {offset.GetUint64(), std::string(bytes.substr(0, length.GetUint64()))};
}

std::vector<std::string> ReadExtensions(const Value& converter) {
    std::vector<std::string> extensions;
    const Value* const array = Find(converter, "extensions");
    if (array == nullptr) return extensions;
    if (!array->IsArray()) RaiseWrongType("extensions", kArray);
    for (const Value& extension : array->GetArray()) {
        if (!extension.IsString()) RaiseWrongType("extensions", "JSON String");
        extensions.push_back(LowerCaseAscii(std::string(TextOf(extension))));
    }
    return extensions;
}

ConverterManifest ReadConverter(const Value& converter, std::string_view locale) {
    ConverterManifest manifest;
    manifest.identifier = TextOf(Require(converter, "identifier", &Value::IsString));
    manifest.name = ChooseName(converter, locale);
    manifest.version = Require(converter, "version", &Value::IsNumber).GetDouble();
    const Value* const force = Find(converter, "force_converter");
    manifest.isForced = force != nullptr && force->IsTrue();
    ForEachObject(converter, "check_format",
                  [&](const Value& signature) { manifest.signatures.push_back(ReadSignature(signature)); });
    manifest.extensions = ReadExtensions(converter);
    return manifest;
}

}  // namespace

std::vector<ConverterManifest> ReadManifest(std::string_view json, std::string_view locale) {
    constexpr unsigned kFlags = rapidjson::kParseIterativeFlag;
    rapidjson::Document document;
    document.Parse<kFlags>(json.data(), json.size());
    if (document.HasParseError()) {
        Raise({kManifestParseFailed, static_cast<std::int64_t>(document.GetErrorOffset())});
    }
    if (!document.IsObject() || !document.HasMember("converter")) Raise(kMandatoryPropertyNotPresent);
    const Value& converters = document["converter"];
    if (!converters.IsArray()) RaiseWrongType("converter", kArray);
    if (converters.Empty()) Raise(kSchemaViolation, "converter");
    std::vector<ConverterManifest> manifests;
    for (const Value& converter : converters.GetArray()) {
        if (!converter.IsObject()) Raise(kSchemaViolation, "converter");
        manifests.push_back(ReadConverter(converter, locale));
    }
    return manifests;
}

}  // namespace zentor
