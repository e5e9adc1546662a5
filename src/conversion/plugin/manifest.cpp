#include "conversion/plugin/manifest.h"

#include <algorithm>
#include <iterator>

#include "errors/locale.h"
#include "errors/rapidjson.h"
#include "util/look_alike.h"
#include "util/path_text.h"

namespace zentor {

namespace {

using Pool = rapidjson::MemoryPoolAllocator<JsonMemory>;
using Value = rapidjson::GenericValue<rapidjson::UTF8<>, Pool>;
using Document = rapidjson::GenericDocument<rapidjson::UTF8<>, Pool, JsonMemory>;

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

// A text that is handed out as a C text.
std::string WithoutZero(const Value& string, const char* key) {
    const std::string_view text = TextOf(string);
    if (text.find('\0') != std::string_view::npos) Raise(kSchemaViolation, key);
    return std::string(text);
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
    return WithoutZero(*chosen, "value");
}

FormatSignature ReadSignature(const Value& signature) {
    const Value& offset = Require(signature, "offset", &Value::IsUint64);
    const std::string_view bytes = TextOf(Require(signature, "byte_seq", &Value::IsString));
    const Value& length = Require(signature, "length", &Value::IsUint64);
    // No bytes would fit any input.
    if (length.GetUint64() == 0 || length.GetUint64() > bytes.size()) Raise(kSchemaViolation, "length");
    return {offset.GetUint64(), std::string(bytes.substr(0, length.GetUint64()))};
}

// The elements of an optional array of texts.
std::vector<std::string> ReadTexts(const Value& converter, const char* key) {
    std::vector<std::string> texts;
    const Value* const array = Find(converter, key);
    if (array == nullptr) return texts;
    if (!array->IsArray()) RaiseWrongType(key, kArray);
    for (const Value& text : array->GetArray()) {
        if (!text.IsString()) RaiseWrongType(key, "JSON String");
        texts.push_back(WithoutZero(text, key));
    }
    return texts;
}

// Whether files can have an extension: what stands after the last point of a name.
bool IsPossible(const std::string& extension) { return extension.find_first_of("./\\") == std::string::npos; }

std::string DoubtfulProperty(const Value& converter, const ConverterManifest& manifest) {
    constexpr std::string_view kKnown[] = {"identifier",   "name",       "version",   "force_converter",
                                           "check_format", "extensions", "parameters"};
    for (const auto& member : converter.GetObject()) {
        const std::string_view key = TextOf(member.name);
        const auto isMeant = [key](std::string_view known) { return LooksLike(key, known); };
        const bool isKnown = std::find(std::begin(kKnown), std::end(kKnown), key) != std::end(kKnown);
        if (!isKnown && std::any_of(std::begin(kKnown), std::end(kKnown), isMeant)) return std::string(key);
    }
    const bool arePossible = std::all_of(manifest.extensions.begin(), manifest.extensions.end(), IsPossible);
    return !arePossible ? "extensions" : "";
}

ConverterManifest ReadConverter(const Value& converter, std::string_view locale) {
    ConverterManifest manifest;
    manifest.identifier = WithoutZero(Require(converter, "identifier", &Value::IsString), "identifier");
    manifest.name = ChooseName(converter, locale);
    manifest.version = Require(converter, "version", &Value::IsNumber).GetDouble();
    const Value* const force = Find(converter, "force_converter");
    manifest.isForced = force != nullptr && force->IsTrue();
    ForEachObject(converter, "check_format",
                  [&](const Value& signature) { manifest.signatures.push_back(ReadSignature(signature)); });
    for (const std::string& extension : ReadTexts(converter, "extensions")) {
        manifest.extensions.push_back(LowerCaseAscii(extension));
    }
    manifest.parameters = ReadTexts(converter, "parameters");
    manifest.doubtfulProperty = DoubtfulProperty(converter, manifest);
    return manifest;
}

}  // namespace

std::vector<ConverterManifest> ReadManifest(std::string_view json, std::string_view locale) {
    constexpr unsigned kFlags = rapidjson::kParseIterativeFlag;
    Document document;
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
